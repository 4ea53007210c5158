// Any bytes as an archive, of which everything is read that can be reached.

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "Platform/ArchiveLimits.h"
#include "Platform/KeyedArchive.h"

namespace {

using orvane::KeyedObject;

void require(bool holds) {
  if (!holds) abort();
}

// What `read` gives, or nothing if the value is of another kind.
template <typename Read>
auto tried(Read read) -> decltype(read()) {
  try {
    return read();
  } catch (const orvane::KeyedArchiveError&) {
    return std::nullopt;
  }
}

class Walk {
 public:
  explicit Walk(size_t archiveSize) : budget_(orvane::expansionLimit(archiveSize)) {}

  void visit(const KeyedObject& object, unsigned int depth) {
    require(depth <= orvane::kMaxDepth);
    spend(object.className().size());
    for (const std::string& key : object.keys()) {
      spend(key.size() + orvane::kValueCost);
      if (tried([&] { return object.boolean(key); }) || tried([&] { return object.integer(key); })) continue;
      if (const auto text = tried([&] { return object.string(key); })) {
        spend(text->size());
      } else if (const auto texts = tried([&] { return object.strings(key); })) {
        for (const std::string& item : *texts) spend(item.size() + orvane::kValueCost);
      } else if (const auto objects = tried([&] { return object.objects(key, "NSObject"); })) {
        for (const KeyedObject& item : *objects) visit(item, depth + 1);
      } else if (const auto dictionary = tried([&] { return object.dictionary(key); })) {
        visit(*dictionary, depth + 1);
      } else if (const auto record = tried([&] { return object.object(key, "NSObject"); })) {
        visit(*record, depth + 1);
      }
    }
  }

 private:
  // What a reader meets was promised to stay within the limit.
  void spend(uint64_t cost) {
    require(cost <= budget_);
    budget_ -= cost;
  }

  uint64_t budget_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  try {
    const KeyedObject top = orvane::openKeyedArchive({data, size}, {{"MCFarm", "OvFarm"}});
    Walk(size).visit(top, 0);
  } catch (const orvane::KeyedArchiveError&) {
  }
  return 0;
}

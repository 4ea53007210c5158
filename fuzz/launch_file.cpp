#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "Crypto/crypto.h"
#include "Files/LaunchFileReader.h"
#include "Files/LaunchFileWriter.h"
#include "Files/OvSettings.h"

// Only single documents are read here, by the function that follows no `url`: the network is never touched.

namespace {

void require(bool holds) {
  if (!holds) abort();
}

// Frees its record, as OvSettings does, and shows the fields without accessors as well.
class Record {
 public:
  explicit Record(const std::string& document) {
    // A buffer of exactly this size, so that a read beyond is seen.
    char* const bytes = static_cast<char*>(malloc(document.size()));
    std::copy(document.begin(), document.end(), bytes);
    orvane::readLaunchDocument(*data_, {bytes, document.size()});
    require(memcmp(bytes, document.data(), document.size()) == 0);
    free(bytes);
  }
  ~Record() { ovsettings_free(data_); }
  Record(const Record&) = delete;
  Record& operator=(const Record&) = delete;

  OvSettingsData& operator*() const { return *data_; }

 private:
  OvSettingsData* const data_ = ovsettings_new();
};

// Every field as text, with a mark before a string that is set.
std::string allFields(const OvSettingsData& record) {
  std::string all;
  orvane::forEachField(record, [&all](const auto& field, auto) {
    if constexpr (std::is_arithmetic_v<std::remove_cvref_t<decltype(field)>>) {
      all += std::to_string(field);
    } else {
      all += field ? std::string("=") + field : "";
    }
    all += '\n';
  });
  return all;
}

std::string saved(const OvSettingsData& record) {
  std::string text;
  return orvane::writeLaunchDocument(record, text) ? text : std::string();
}

// What was saved once and read loses nothing more by the next round, `llmservers` apart: its escapes are never undone.
void roundTrip(const OvSettingsData& record) {
  const std::string text = saved(record);
  if (text.empty()) return;
  const Record once(orvane::encipheredContainer(text));
  if (ovsettings_get_broker_servers(&*once)) ovsettings_set_broker_servers(&*once, "broker");
  const std::string again = saved(*once);
  require(!again.empty());
  const Record twice(again);
  require(allFields(*once) == allFields(*twice));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string document(data, data + size);
  const Record plain(document);
  const Record enciphered(orvane::encipheredContainer(document));
  // An input may itself be a container, and an empty document in a container is none.
  std::string inner = document;
  const bool isContainer =
      size > 0 && crypto_decrypt_buffer(reinterpret_cast<unsigned char*>(inner.data()), inner.size()) > 0;
  if (size > 0 && !isContainer) require(allFields(*plain) == allFields(*enciphered));
  roundTrip(*plain);
  return 0;
}

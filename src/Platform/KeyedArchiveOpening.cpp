#include <algorithm>

#include "Platform/ArchiveLimits.h"
#include "Platform/BinaryPropertyListCheck.h"
#include "Platform/KeyedArchive.h"
#include "Platform/KeyedArchiveContents.h"

namespace orvane {
namespace {

[[noreturn]] void fail(const std::string& what) { throw KeyedArchiveError("keyed archive: " + what); }

plist_t parse(std::span<const uint8_t> bytes) {
  checkBinaryPropertyList(bytes);
  plist_t root = nullptr;
  plist_from_bin(reinterpret_cast<const char*>(bytes.data()), static_cast<uint32_t>(bytes.size()), &root);
  if (!root) fail("its property list can't be read");
  return root;
}

// Fills an archive's contents from its property list, and measures what a reader will meet.
class Opening {
 public:
  Opening(KeyedArchiveContents& contents, const std::map<std::string, std::string>& renamedClasses, uint64_t limit)
      : contents_(contents), renamedClasses_(renamedClasses), limit_(limit) {}

  void run() {
    if (!isOfType(contents_.root.get(), PLIST_DICT)) fail("its property list is no dictionary");
    if (textOf(entry("$archiver", PLIST_STRING)) != "NSKeyedArchiver") fail("of another archiver");
    uint64_t version = 0;
    plist_get_uint_val(entry("$version", PLIST_UINT), &version);
    if (version != 100000) fail("of another version");
    indexObjects();
    follow(extents_.back(), 0);
  }

 private:
  // An object among the others: what it refers to, and what it amounts to with all that.
  struct Extent {
    uint64_t cost = 0;
    size_t firstReference = 0;
    size_t endOfReferences = 0;
    unsigned int height = 0;  // references from here to the farthest object, and 1; 0 until it is known
  };

  plist_t entry(const char* key, plist_type type) const {
    const plist_t value = plist_dict_get_item(contents_.root.get(), key);
    if (!isOfType(value, type)) fail("it has no " + std::string(key) + " or one of a wrong kind");
    return value;
  }

  void indexObjects() {
    forEachItem(entry("$objects", PLIST_ARRAY), [&](plist_t node) { contents_.objects.push_back({node, nullptr}); });
    if (contents_.objects.empty() || !isOfType(contents_.objects.front().node, PLIST_STRING) ||
        textOf(contents_.objects.front().node) != "$null") {
      fail("its first object is not nil");
    }
    for (KeyedArchiveContents::Object& object : contents_.objects) {
      beginExtent();
      if (isOfType(object.node, PLIST_DICT)) {
        object.record = std::make_unique<KeyedRecord>();
        indexRecord(object.node, *object.record);
      } else {
        measure(object.node);
      }
      extents_.back().endOfReferences = references_.size();
    }
    beginExtent();
    indexRecord(entry("$top", PLIST_DICT), contents_.top);
    extents_.back().endOfReferences = references_.size();
  }

  void beginExtent() { extents_.push_back({.cost = kValueCost, .firstReference = references_.size()}); }

  void indexRecord(plist_t dictionary, KeyedRecord& record) {
    record.fields.reserve(plist_dict_get_size(dictionary));
    forEachPair(dictionary, [&](std::string_view key, plist_t value) {
      if (key == "$class") {
        record.kind = &classAt(indexOf(value));
        extents_.back().cost += record.kind->name.size();
        return;
      }
      if (key.starts_with('$')) key.remove_prefix(1);
      record.fields.push_back({*contents_.names.emplace(key).first, value});
      extents_.back().cost += key.size();
      measure(value);
    });
    record.sortFields();
  }

  // Recurses no deeper than the property list's check lets it be.
  void measure(plist_t node) {
    Extent& extent = extents_.back();
    extent.cost += kValueCost;
    switch (plist_get_node_type(node)) {
      case PLIST_UID:
        references_.push_back(indexOf(node));
        break;
      case PLIST_STRING:
        extent.cost += textOf(node).size();
        break;
      case PLIST_ARRAY:
        forEachItem(node, [&](plist_t item) { measure(item); });
        break;
      case PLIST_DICT:
        forEachPair(node, [&](const char*, plist_t value) { measure(value); });
        break;
      default:
        break;
    }
  }

  uint64_t indexOf(plist_t reference) const {
    if (!isOfType(reference, PLIST_UID)) fail("an object's class is not a reference");
    uint64_t index = 0;
    plist_get_uid_val(reference, &index);
    if (index >= contents_.objects.size()) fail("a reference to an object that isn't there");
    return index;
  }

  const KeyedClass& classAt(uint64_t index) {
    const auto [known, isNew] = contents_.classes.try_emplace(index);
    KeyedClass& result = known->second;
    if (!isNew) return result;
    const plist_t node = contents_.objects[index].node;
    const plist_t name = isOfType(node, PLIST_DICT) ? plist_dict_get_item(node, "$classname") : nullptr;
    if (!isOfType(name, PLIST_STRING)) fail("an object's class has no name");
    result.name = readName(name);
    result.kinds.insert(result.name);
    if (const plist_t names = plist_dict_get_item(node, "$classes"); isOfType(names, PLIST_ARRAY)) {
      forEachItem(names, [&](plist_t item) {
        if (isOfType(item, PLIST_STRING)) result.kinds.insert(readName(item));
      });
    }
    return result;
  }

  std::string readName(plist_t archived) const {
    const std::string name(textOf(archived));
    const auto renamed = renamedClasses_.find(name);
    return renamed == renamedClasses_.end() ? name : renamed->second;
  }

  // Each object is measured once, so the time is that of the references. A circle of them is a path without an end.
  void follow(Extent& extent, unsigned int level) {
    if (level > kMaxDepth) fail("objects refer to each other in a circle or too deeply");
    unsigned int height = 1;
    for (size_t i = extent.firstReference; i < extent.endOfReferences; ++i) {
      Extent& target = extents_[references_[i]];
      if (target.height == 0) follow(target, level + 1);
      height = std::max(height, target.height + 1);
      extent.cost += target.cost;
      if (extent.cost > limit_) fail("shared objects amount to too much");
    }
    if (level + height > kMaxDepth + 1) fail("objects refer to each other in a circle or too deeply");
    extent.height = height;
  }

  KeyedArchiveContents& contents_;
  const std::map<std::string, std::string>& renamedClasses_;
  const uint64_t limit_;
  std::vector<Extent> extents_{};  // of the objects, and of the top at the end
  std::vector<uint64_t> references_{};
};

}  // namespace

KeyedObject openKeyedArchive(std::span<const uint8_t> bytes, const std::map<std::string, std::string>& renamedClasses) {
  auto contents = std::make_shared<KeyedArchiveContents>(parse(bytes));
  Opening(*contents, renamedClasses, expansionLimit(bytes.size())).run();
  std::shared_ptr<const KeyedRecord> top(contents, &contents->top);
  return KeyedObject(std::move(contents), std::move(top));
}

}  // namespace orvane

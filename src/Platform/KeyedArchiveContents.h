#pragma once

#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include <plist/plist.h>

namespace orvane {

/// A class of archived objects, by the names that it is read by.
struct KeyedClass {
  std::string name{};
  std::set<std::string, std::less<>> kinds{};  ///< its own name and those of the classes that it is a kind of
};

struct KeyedField {
  std::string_view key;
  plist_t value;  ///< as it stands in the record; see KeyedArchiveContents::resolve
};

/// An archived object that has fields.
struct KeyedRecord {
  const KeyedClass* kind = nullptr;  ///< null for the archive's top and for the objects that tell of classes
  std::vector<KeyedField> fields{};  ///< sorted by key

  bool isA(std::string_view className) const { return kind && kind->kinds.contains(className); }
  /// The value as it stands in the record, or null.
  plist_t field(std::string_view key) const;
  void sortFields();
};

/// What a field or an entry stands for.
struct KeyedValue {
  plist_t node = nullptr;               ///< null for nil
  const KeyedRecord* record = nullptr;  ///< null for a value without fields
};

/// The objects of an archive, indexed once so that neither following a reference nor finding a field takes a search
/// through the property list. Any number of threads may read.
struct KeyedArchiveContents {
  struct Object {
    plist_t node;
    std::unique_ptr<KeyedRecord> record;  ///< null for a value without fields
  };

  explicit KeyedArchiveContents(plist_t propertyList) : root(propertyList, plist_free) {}
  /// Wipes the texts.
  ~KeyedArchiveContents();
  KeyedArchiveContents(const KeyedArchiveContents&) = delete;
  KeyedArchiveContents& operator=(const KeyedArchiveContents&) = delete;

  /// Follows `value` if it is a reference, which is within the archive.
  KeyedValue resolve(plist_t value) const;
  /// The text that `value` is, as long as the archive lives.
  std::optional<std::string_view> text(const KeyedValue& value) const;

  const std::unique_ptr<void, decltype(&plist_free)> root;
  std::vector<Object> objects{};             ///< the first is nil
  std::map<uint64_t, KeyedClass> classes{};  ///< by the index of the object that tells of the class
  std::unordered_set<std::string> names{};   ///< the keys of all records
  KeyedRecord top{};
};

/// Calls `use(item)` for each item of a property list's array.
template <typename Use>
void forEachItem(plist_t array, Use use) {
  plist_array_iter iterator = nullptr;
  plist_array_new_iter(array, &iterator);
  const std::unique_ptr<void, decltype(&free)> freeAtEnd(iterator, free);
  plist_t item = nullptr;
  for (plist_array_next_item(array, iterator, &item); item; plist_array_next_item(array, iterator, &item)) use(item);
}

/// Calls `use(key, value)` for each pair of a property list's dictionary; the key is gone after the call.
template <typename Use>
void forEachPair(plist_t dictionary, Use use) {
  plist_dict_iter iterator = nullptr;
  plist_dict_new_iter(dictionary, &iterator);
  const std::unique_ptr<void, decltype(&free)> freeAtEnd(iterator, free);
  for (;;) {
    char* key = nullptr;
    plist_t value = nullptr;
    plist_dict_next_item(dictionary, iterator, &key, &value);
    const std::unique_ptr<char, decltype(&free)> freeKey(key, free);
    if (!value) return;
    use(static_cast<const char*>(key), value);
  }
}

inline bool isOfType(plist_t node, plist_type type) { return node && plist_get_node_type(node) == type; }

/// The text of a node of that type.
inline std::string_view textOf(plist_t node) {
  uint64_t size = 0;
  const char* text = plist_get_string_ptr(node, &size);
  return {text, size};
}

}  // namespace orvane

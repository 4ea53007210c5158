#include "Platform/KeyedArchiveContents.h"

#include <algorithm>

#include "Support/SecureMemory.h"

namespace orvane {

plist_t KeyedRecord::field(std::string_view key) const {
  const auto found = std::ranges::lower_bound(fields, key, {}, &KeyedField::key);
  return found != fields.end() && found->key == key ? found->value : nullptr;
}

void KeyedRecord::sortFields() { std::ranges::stable_sort(fields, {}, &KeyedField::key); }

KeyedArchiveContents::~KeyedArchiveContents() {
  for (const Object& object : objects) {
    if (!isOfType(object.node, PLIST_STRING)) continue;
    const std::string_view text = textOf(object.node);
    wipe(const_cast<char*>(text.data()), text.size());
  }
}

KeyedValue KeyedArchiveContents::resolve(plist_t value) const {
  if (!isOfType(value, PLIST_UID)) return {value, nullptr};
  uint64_t index = 0;
  plist_get_uid_val(value, &index);
  if (index == 0) return {};
  return {objects[index].node, objects[index].record.get()};
}

std::optional<std::string_view> KeyedArchiveContents::text(const KeyedValue& value) const {
  const plist_t node =
      value.record && value.record->isA("NSString") ? resolve(value.record->field("NS.string")).node : value.node;
  if (!isOfType(node, PLIST_STRING)) return std::nullopt;
  return textOf(node);
}

}  // namespace orvane

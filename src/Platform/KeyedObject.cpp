#include <utility>

#include "Platform/KeyedArchive.h"
#include "Platform/KeyedArchiveContents.h"

namespace orvane {
namespace {

[[noreturn]] void refuse(std::string_view key, std::string_view what) {
  throw KeyedArchiveError("keyed archive: \"" + std::string(key) + "\" is not " + std::string(what));
}

// The array that a collection keeps under `field`.
std::vector<plist_t> itemsOf(const KeyedValue& collection, std::string_view className, std::string_view field,
                             std::string_view key) {
  const bool isOne = collection.record && collection.record->isA(className);
  const plist_t array = isOne ? collection.record->field(field) : nullptr;
  if (!isOfType(array, PLIST_ARRAY)) refuse(key, "of the class " + std::string(className));
  std::vector<plist_t> items;
  items.reserve(plist_array_get_size(array));
  forEachItem(array, [&](plist_t item) { items.push_back(item); });
  return items;
}

}  // namespace

KeyedObject::KeyedObject(std::shared_ptr<const KeyedArchiveContents> contents,
                         std::shared_ptr<const KeyedRecord> record)
    : contents_(std::move(contents)), record_(std::move(record)) {}

std::string KeyedObject::className() const { return record_->kind ? record_->kind->name : std::string(); }

std::vector<std::string> KeyedObject::keys() const {
  std::vector<std::string> keys;
  for (const KeyedField& field : record_->fields) keys.emplace_back(field.key);
  return keys;
}

std::optional<bool> KeyedObject::boolean(std::string_view key) const {
  const KeyedValue found = value(key);
  if (!found.node) return std::nullopt;
  if (!isOfType(found.node, PLIST_BOOLEAN)) refuse(key, "true or false");
  uint8_t truth = 0;
  plist_get_bool_val(found.node, &truth);
  return truth != 0;
}

std::optional<int64_t> KeyedObject::integer(std::string_view key) const {
  const KeyedValue found = value(key);
  if (!found.node) return std::nullopt;
  if (!isOfType(found.node, PLIST_UINT)) refuse(key, "an integer");
  uint64_t number = 0;
  plist_get_uint_val(found.node, &number);
  return static_cast<int64_t>(number);
}

std::optional<std::string> KeyedObject::string(std::string_view key) const {
  const KeyedValue found = value(key);
  if (!found.node) return std::nullopt;
  const std::optional<std::string_view> text = contents_->text(found);
  if (!text) refuse(key, "a text");
  return std::optional<std::string>(std::in_place, *text);  // no copy of a secret stays behind
}

std::optional<std::vector<std::string>> KeyedObject::strings(std::string_view key) const {
  const KeyedValue found = value(key);
  if (!found.node) return std::nullopt;
  std::vector<std::string> texts;
  for (const plist_t item : itemsOf(found, "NSArray", "NS.objects", key)) {
    const std::optional<std::string_view> text = contents_->text(contents_->resolve(item));
    if (!text) refuse(key, "a list of texts");
    texts.emplace_back(*text);
  }
  return texts;
}

std::optional<KeyedObject> KeyedObject::object(std::string_view key, std::string_view className) const {
  const KeyedValue found = value(key);
  if (!found.node) return std::nullopt;
  return objectOf(found, key, className);
}

std::optional<std::vector<KeyedObject>> KeyedObject::objects(std::string_view key, std::string_view className) const {
  const KeyedValue found = value(key);
  if (!found.node) return std::nullopt;
  std::vector<KeyedObject> objects;
  for (const plist_t item : itemsOf(found, "NSArray", "NS.objects", key)) {
    objects.push_back(objectOf(contents_->resolve(item), key, className));
  }
  return objects;
}

std::optional<KeyedObject> KeyedObject::dictionary(std::string_view key) const {
  const KeyedValue found = value(key);
  if (!found.node) return std::nullopt;
  const std::vector<plist_t> names = itemsOf(found, "NSDictionary", "NS.keys", key);
  const std::vector<plist_t> values = itemsOf(found, "NSDictionary", "NS.objects", key);
  if (names.size() != values.size()) refuse(key, "a dictionary with a value for each key");
  auto entries = std::make_shared<KeyedRecord>();
  entries->kind = found.record->kind;
  for (size_t i = 0; i < names.size(); ++i) {
    const std::optional<std::string_view> name = contents_->text(contents_->resolve(names[i]));
    if (!name) refuse(key, "a dictionary with texts as its keys");
    entries->fields.push_back({*name, values[i]});
  }
  entries->sortFields();
  return KeyedObject(contents_, std::move(entries));
}

KeyedValue KeyedObject::value(std::string_view key) const { return contents_->resolve(record_->field(key)); }

KeyedObject KeyedObject::objectOf(const KeyedValue& value, std::string_view key, std::string_view className) const {
  if (!value.record || !value.record->isA(className)) refuse(key, "of the class " + std::string(className));
  return KeyedObject(contents_, std::shared_ptr<const KeyedRecord>(contents_, value.record));
}

}  // namespace orvane

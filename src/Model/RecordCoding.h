#pragma once

#include <memory>

#include "Model/RecordFields.h"
#include "Model/SecretText.h"
#include "Platform/KeyedArchive.h"

/// @file
/// Coding of the records by their tables. Whoever decodes gets what the archive says, and for a key that it lacks the
/// type's zero, not the value of a new record.

namespace orvane {

/// The number at the start of a decimal text, blanks before it skipped; what doesn't fit is the nearest that does, and
/// a text without a number is 0.
int32_t integerOfText(const std::string& text);

/// @throws KeyedArchiveError if `value` is no 32-bit number.
int32_t narrowed(int64_t value);

template <class Record>
void encodeFields(KeyedArchiver& archiver, const Record& record);

/// `record`, which should be new, with the fields as `object` has them.
template <class Record>
void decodeFields(const KeyedObject& object, Record& record);

// How each type of a field stands in an archive.

inline void encodeValue(KeyedArchiver& archiver, const char* key, const std::string& value) {
  archiver.encodeString(key, value);
}
inline void encodeValue(KeyedArchiver& archiver, const char* key, bool value) { archiver.encodeBool(key, value); }
inline void encodeValue(KeyedArchiver& archiver, const char* key, int32_t value) { archiver.encodeInteger(key, value); }
inline void encodeValue(KeyedArchiver& archiver, const char* key, const std::vector<std::string>& value) {
  archiver.encodeStrings(key, value);
}
template <class Record>
requires requires { Record::kArchiveClass; }
void encodeValue(KeyedArchiver& archiver, const char* key, const Record& value) {
  archiver.encodeObject(key, Record::kArchiveClass, [&](KeyedArchiver& fields) { value.encodeWithCoder(fields); });
}
template <class Record>
void encodeValue(KeyedArchiver& archiver, const char* key, const std::vector<std::shared_ptr<Record>>& value) {
  archiver.encodeObjects(key, Record::kArchiveClass, value.size(),
                         [&](KeyedArchiver& fields, size_t index) { value[index]->encodeWithCoder(fields); });
}

inline void decodeValue(const KeyedObject& object, const char* key, std::string& value) {
  value = object.string(key).value_or("");
}
inline void decodeValue(const KeyedObject& object, const char* key, bool& value) {
  value = object.boolean(key).value_or(false);
}
inline void decodeValue(const KeyedObject& object, const char* key, int32_t& value) {
  value = narrowed(object.integer(key).value_or(0));
}
inline void decodeValue(const KeyedObject& object, const char* key, std::vector<std::string>& value) {
  value = object.strings(key).value_or(std::vector<std::string>());
}
template <class Record>
requires requires { Record::kArchiveClass; }
void decodeValue(const KeyedObject& object, const char* key, Record& value) {
  const auto fields = object.object(key, Record::kArchiveClass);
  value = fields ? Record(*fields) : Record();
}
template <class Record>
void decodeValue(const KeyedObject& object, const char* key, std::vector<std::shared_ptr<Record>>& value) {
  value.clear();
  const auto members = object.objects(key, Record::kArchiveClass);
  if (!members) return;
  for (const KeyedObject& fields : *members) value.push_back(std::make_shared<Record>(fields));
}

template <class Record, class Value>
void encodeField(KeyedArchiver& archiver, const Record& record, const RecordField<Record, Value>& row) {
  using Form = typename Archiving<Record>::Form;
  const auto& [form, onlyIf] = row.archiving;
  if (form == Form::kNever || (onlyIf != nullptr && !(record.*onlyIf))) return;
  const Value& value = record.*row.member;
  if constexpr (std::is_same_v<Value, int32_t>) {
    if (form == Form::kDecimalString) return archiver.encodeString(row.key, std::to_string(value));
  }
  if constexpr (!std::is_same_v<Value, SecretText>) encodeValue(archiver, row.key, value);
}

template <class Record, class Value>
void decodeField(const KeyedObject& object, Record& record, const RecordField<Record, Value>& row) {
  using Form = typename Archiving<Record>::Form;
  Value& value = record.*row.member;
  if (row.archiving.form == Form::kNever) {
    value = Value();
    return;
  }
  if constexpr (std::is_same_v<Value, int32_t>) {
    if (row.archiving.form == Form::kDecimalString) {
      value = integerOfText(object.string(row.key).value_or(""));
      return;
    }
  }
  if constexpr (!std::is_same_v<Value, SecretText>) decodeValue(object, row.key, value);
}

template <class Record>
void encodeFields(KeyedArchiver& archiver, const Record& record) {
  std::apply([&](const auto&... row) { (encodeField(archiver, record, row), ...); }, Record::fields());
}

template <class Record>
void decodeFields(const KeyedObject& object, Record& record) {
  std::apply([&](const auto&... row) { (decodeField(object, record, row), ...); }, Record::fields());
}

}  // namespace orvane

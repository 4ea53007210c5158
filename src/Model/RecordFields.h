#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

/// @file
/// The plain records of a connection as tables: one row for each field, from which its member, its accessors, equality
/// and coding come. A record lists its rows in a macro that calls ROW for each, with
///
///     type, name, Name, value in a new record, archive key, way of archiving
///
/// as in `ROW(int32_t, color, Color, 24, "color", archived())`, in the order of the record, and has them expanded by
/// ORVANE_RECORD in the class. Copying is that of the members, which share nothing.

namespace orvane {

class KeyedArchiver;
class KeyedObject;

/// How a field goes into an archive.
template <class Record>
struct Archiving {
  enum class Form { kAsItIs, kDecimalString, kNever };
  Form form = Form::kAsItIs;
  bool Record::*onlyIf = nullptr;  ///< the switch that must be on for it, or null
};

template <class Record, class Value>
struct RecordField {
  const char* key;
  Value Record::*member;
  Archiving<Record> archiving;
};

/// Whether two records agree in every row of their table.
template <class Record>
bool haveEqualFields(const Record& left, const Record& right) {
  return std::apply([&](const auto&... row) { return ((left.*row.member == right.*row.member) && ...); },
                    Record::fields());
}

}  // namespace orvane

#define ORVANE_RECORD_MEMBER(type, name, Name, initial, key, archiving)                          \
 public:                                                                                         \
  std::conditional_t<std::is_scalar_v<type>, type, const type&> name() const { return name##_; } \
  void set##Name(type value) { name##_ = std::move(value); }                                     \
                                                                                                 \
 private:                                                                                        \
  type name##_ = initial;

#define ORVANE_RECORD_ROW(type, name, Name, initial, key, archiving) \
  , orvane::RecordField<Record, type> { key, &Record::name##_, archiving }

/// In the class Ov`Name`: for each row name(), setName(value) and name_, and for the record what its public part shows.
/// Decoding takes from the archive what it says; a field that it lacks is empty, 0 or false, whatever a new record has.
/// It throws KeyedArchiveError for a value of another kind. Leaves the class in its private section.
#define ORVANE_RECORD(Name, ROWS)                                                                                    \
  ROWS(ORVANE_RECORD_MEMBER)                                                                                         \
  using Record = Ov##Name;                                                                                           \
  using Archiving = orvane::Archiving<Record>;                                                                       \
  static constexpr Archiving archived(bool Record::*onlyIf = nullptr) { return {Archiving::Form::kAsItIs, onlyIf}; } \
  static constexpr Archiving asDecimalString() { return {Archiving::Form::kDecimalString}; }                         \
  static constexpr Archiving neverArchived() { return {Archiving::Form::kNever}; }                                   \
                                                                                                                     \
 public:                                                                                                             \
  static constexpr const char* kArchiveClass = "Ov" #Name;                                                           \
  /** A RecordField for each row. */                                                                                 \
  static const auto& fields() {                                                                                      \
    constexpr auto table = [](int /*before the first comma*/, auto... row) { return std::tuple(row...); };           \
    static constexpr auto rows = table(0 ROWS(ORVANE_RECORD_ROW));                                                   \
    return rows;                                                                                                     \
  }                                                                                                                  \
                                                                                                                     \
  explicit Ov##Name(const orvane::KeyedObject& object);                                                              \
  void encodeWithCoder(orvane::KeyedArchiver& archiver) const;                                                       \
                                                                                                                     \
  bool isEqualTo##Name(const Ov##Name& other) const { return orvane::haveEqualFields(*this, other); }                \
  bool operator==(const Ov##Name& other) const { return isEqualTo##Name(other); }                                    \
                                                                                                                     \
 private:

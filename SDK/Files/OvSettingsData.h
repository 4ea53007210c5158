#pragma once

#include <type_traits>

#include "Files/ovsettings.h"

/// The launch record, for the sources of this folder alone. It has no constructor, so that ovsettings_init can fill raw
/// memory; strings are buffers of malloc, or null.
struct OvSettingsData {  // NOLINT(clang-analyzer-optin.performance.Padding): the table is ordered for its reader
#define OVSETTINGS_STRING(stem, Name, defaultValue) char* stem;
#define OVSETTINGS_BOOL(stem, Name, defaultValue) bool stem;
#define OVSETTINGS_INT(stem, Name, defaultValue) int stem;
#include "Files/OvSettingsAllFields.def"
};

namespace orvane {

/// Calls `visit(field, default)` for every field in the record's order. The default of a string is a `const char*` or
/// `nullptr`.
template <typename Record, typename Visitor>
void forEachField(Record& record, Visitor visit) {
#define OVSETTINGS_STRING(stem, Name, defaultValue) visit(record.stem, defaultValue);
#define OVSETTINGS_BOOL(stem, Name, defaultValue) visit(record.stem, defaultValue);
#define OVSETTINGS_INT(stem, Name, defaultValue) visit(record.stem, defaultValue);
#include "Files/OvSettingsAllFields.def"
}

/// Calls `visit(field)` for every string.
template <typename Record, typename Visitor>
void forEachText(Record& record, Visitor visit) {
  forEachField(record, [&visit](auto& field, auto) {
    if constexpr (std::is_pointer_v<std::remove_reference_t<decltype(field)>>) visit(field);
  });
}

/// Stores a copy of `value`, which may be null or `field` itself, and wipes and frees what was there. If memory is
/// short the field is unset.
void assignText(char*& field, const char* value);

/// Wipes, frees and unsets a string.
void clearText(char*& field);

/// True if a string is neither unset nor empty.
inline bool isSet(const char* text) { return text && *text; }

/// Frees what the record holds and sets the defaults.
void resetRecord(OvSettingsData& record);

}  // namespace orvane

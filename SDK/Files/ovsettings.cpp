#include "Files/ovsettings.h"

#include <cstdlib>
#include <cstring>

#include "Files/OvSettingsData.h"
#include "Support/SecureMemory.h"

namespace orvane {

namespace {

template <typename Value>
void setDefault(Value& field, Value defaultValue) {
  field = defaultValue;
}
void setDefault(char*& field, const char* defaultValue) { field = defaultValue ? strdup(defaultValue) : nullptr; }

void clearTexts(OvSettingsData& record) { forEachText(record, clearText); }

bool hasAllDefaults(const OvSettingsData& record) {
  bool complete = true;
  forEachField(record, [&complete](const auto& field, auto defaultValue) {
    if constexpr (std::is_same_v<decltype(defaultValue), const char*>) complete = complete && field;
  });
  return complete;
}

}  // namespace

void clearText(char*& field) {
  if (!field) return;
  wipe(field, strlen(field));
  free(field);
  field = nullptr;
}

void assignText(char*& field, const char* value) {
  char* const copy = value ? strdup(value) : nullptr;
  clearText(field);
  field = copy;
}

void resetRecord(OvSettingsData& record) {
  clearTexts(record);
  ovsettings_init(&record);
}

}  // namespace orvane

OvSettingsData* ovsettings_new() {
  auto* const record = static_cast<OvSettingsData*>(malloc(sizeof(OvSettingsData)));
  if (!record) return nullptr;
  ovsettings_init(record);
  if (orvane::hasAllDefaults(*record)) return record;
  ovsettings_free(record);
  return nullptr;
}

void ovsettings_init(OvSettingsData* record) {
  memset(record, 0, sizeof *record);
  orvane::forEachField(*record, [](auto& field, auto defaultValue) { orvane::setDefault(field, defaultValue); });
}

void ovsettings_free(OvSettingsData* record) {
  if (!record) return;
  orvane::clearTexts(*record);
  free(record);
}

#define OVSETTINGS_STRING(stem, Name, defaultValue)                                        \
  const char* ovsettings_get_##stem(const OvSettingsData* record) { return record->stem; } \
  void ovsettings_set_##stem(OvSettingsData* record, const char* value) { orvane::assignText(record->stem, value); }
#define OVSETTINGS_BOOL(stem, Name, defaultValue)                                   \
  bool ovsettings_get_##stem(const OvSettingsData* record) { return record->stem; } \
  void ovsettings_set_##stem(OvSettingsData* record, bool value) { record->stem = value; }
#define OVSETTINGS_INT(stem, Name, defaultValue)                                   \
  int ovsettings_get_##stem(const OvSettingsData* record) { return record->stem; } \
  void ovsettings_set_##stem(OvSettingsData* record, int value) { record->stem = value; }
#include "Files/OvSettingsFields.def"

#include "RecordFields.h"

#include <algorithm>
#include <sstream>

#include <gtest/gtest.h>

namespace {

std::string asText(const char* field) { return field ? field : "(unset)"; }
std::string asText(int field) { return std::to_string(field); }

}  // namespace

RecordFields fieldsOf(const OvSettingsData& record) {
  RecordFields fields;
#define OVSETTINGS_STRING(stem, Name, defaultValue) fields[#stem] = asText(record.stem);
#define OVSETTINGS_BOOL(stem, Name, defaultValue) fields[#stem] = asText(record.stem);
#define OVSETTINGS_INT(stem, Name, defaultValue) fields[#stem] = asText(record.stem);
#include "Files/OvSettingsAllFields.def"
  return fields;
}

RecordFields defaultsAfterLoad() {
  OvSettingsData* const record = ovsettings_new();
  ovsettings_set_connector_type(record, "");
  RecordFields fields = fieldsOf(*record);
  ovsettings_free(record);
  return fields;
}

RecordFields with(RecordFields fields, const RecordFields& changes) {
  for (const auto& [name, value] : changes) {
    EXPECT_TRUE(fields.contains(name)) << name;
    fields[name] = value;
  }
  return fields;
}

RecordFields with(const RecordFields& fields, const std::string& changes) {
  RecordFields changed;
  std::istringstream stream(changes);
  for (std::string change; std::getline(stream, change, '|');) {
    const size_t equals = change.find('=');
    changed[change.substr(0, equals)] = change.substr(equals + 1);
  }
  return with(fields, changed);
}

std::string linesOf(std::string text) {
  std::replace(text.begin(), text.end(), '|', '\n');
  return text;
}

#include <type_traits>

#include "Files/OvSettings.h"
#include "RecordFields.h"
#include "Support/TemporaryFolder.h"

extern "C" int saveAndLoadInC(const char* path);  // ovsettings.c

namespace {

TEST(OvSettings, AFreshRecordHasTheseDefaultsAndElseNothing) {
  RecordFields notEmpty;
  OvSettingsData* const record = ovsettings_new();
  for (const auto& [name, value] : fieldsOf(*record)) {
    if (value != "0" && value != "(unset)") notEmpty[name] = value;
  }
  ovsettings_free(record);
  EXPECT_EQ(notEmpty, (RecordFields{
                          {"connector_type", "Windows Connector (OVTSC)"},
                          {"drives_to_redirect", "*"},
                          {"devices_to_redirect", "*"},
                          {"display_connection_bar", "1"},
                          {"pin_connection_bar", "1"},
                          {"redirect_clipboard", "1"},
                          {"session_sharing", "1"},
                          {"connection_type", "6"},
                          {"enable_auto_reconnection", "1"},
                          {"use_proxy", "1"},
                          {"compression", "1"},
                          {"encryption", "1"},
                          {"enable_domain", "1"},
                      }));
}

TEST(OvSettings, AStringIsCopiedAndNullUnsetsIt) {
  OvSettings settings;
  std::string name = "ann";
  settings.setUsername(name.c_str());
  name = "bob";
  EXPECT_STREQ(settings.getUsername(), "ann");
  settings.setUsername(settings.getUsername());
  EXPECT_STREQ(settings.getUsername(), "ann");
  settings.setUsername(nullptr);
  EXPECT_EQ(settings.getUsername(), nullptr);
}

TEST(OvSettings, MovesButIsNotCopied) {
  static_assert(!std::is_copy_constructible_v<OvSettings> && !std::is_copy_assignable_v<OvSettings>);
  OvSettings first;
  first.setFarmName("Farm");
  OvSettings second(std::move(first));
  OvSettings third;
  third = std::move(second);
  EXPECT_STREQ(third.getFarmName(), "Farm");
  ovsettings_free(nullptr);
}

TEST(OvSettings, TheFlatLayerServesC) {
  const TemporaryFolder folder;
  EXPECT_EQ(saveAndLoadInC(folder.file("c.ovl").c_str()), 1);
}

}  // namespace

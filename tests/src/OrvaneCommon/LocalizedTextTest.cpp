#include <cstdlib>

#include "OrvaneCommon/LocalizedText.h"
#include "OrvaneCommon/PresentationTexts.h"
#include "OrvaneCommon/UserLanguages.h"
#include "Support/HomeOfTest.h"

namespace {

TEST(LocalizedText, ComesInTheLanguageElseInEnglishElseAsTheKey) {
  const char* const rows[][3] = {
      {"Labels.ConnectionSpeed.Satellite", "de", "Satellit"},
      {"Labels.ConnectionSpeed.Satellite", "zh-Hans", "卫星"},
      {"Labels.ConnectionSpeed.Satellite", "zh-Hant", "衛星"},
      {"Labels.ConnectionSpeed.Satellite", "pt", "Satellite"},
      {"Location.ProtocolName.Https", "ja", "HTTPS"},
      {"No.Such.Key", "de", "No.Such.Key"},
      {"", "en", ""},
      {"zzz", "ko", "zzz"},
  };
  for (const auto& [key, language, text] : rows) {
    EXPECT_EQ(orvane::localizedText(key, language), text) << language;
  }
}

TEST(LocalizedText, LocaleNamesLeadToTheLanguagesOfTheProgram) {
  using Names = std::vector<std::string>;
  const struct {
    Names languages, localisations;
  } rows[] = {
      {{"de_AT.UTF-8@euro", "de", "fr"}, {"de", "fr"}},
      {{"pt_BR", "es-MX"}, {"es"}},
      {{"pt_BR"}, {"en"}},
      {{"C"}, {"en"}},
      {{"POSIX", "C.UTF-8", "en_GB"}, {"en"}},
      {{"zh", "zh_TW.Big5"}, {"zh-Hans", "zh-Hant"}},
      {{"zh_HK"}, {"zh-Hant"}},
      {{"zh-Hant-SG", "zh_CN"}, {"zh-Hant", "zh-Hans"}},
      {{"deutsch", "", "."}, {"en"}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(orvane::localisationsFor(row.languages), row.localisations) << row.languages.front();
  }
}

TEST(LocalizedText, TheEnvironmentTellsTheLanguagesInItsOrder) {
  const HomeOfTest home;
  using Names = std::vector<std::string>;
  EXPECT_EQ(orvane::preferredLanguages(), Names{"C"});
  for (const char* variable : {"LANG", "LC_MESSAGES", "LC_ALL"}) {
    setenv(variable, variable, 1);
    EXPECT_EQ(orvane::preferredLanguages(), Names{variable});
  }
  setenv("LC_ALL", "", 1);
  setenv("LANGUAGE", ":ko_KR::de", 1);
  EXPECT_EQ(orvane::preferredLanguages(), (Names{"ko_KR", "de"}));
  EXPECT_EQ(orvane::currentLocale(), "LC_MESSAGES");
  EXPECT_EQ(orvane::connectionSpeedLabel(3), "위성");
}

TEST(PresentationTexts, AnUnknownValueShowsAsTheUsualOne) {
  const HomeOfTest home;
  for (const int speed : {0, -1, 8, 6}) EXPECT_EQ(orvane::connectionSpeedLabel(speed), "Local network (LAN)");
  EXPECT_EQ(orvane::connectionSpeedLabel(1), "Modem");
  EXPECT_EQ(orvane::connectionSpeedLabel(7), "Automatic");
  EXPECT_EQ(orvane::protocolName(1), "HTTPS");
  EXPECT_EQ(orvane::protocolName(2), "HTTP");
}

}  // namespace

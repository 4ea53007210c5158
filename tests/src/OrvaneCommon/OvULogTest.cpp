#include <cstdlib>
#include <regex>

#include "OrvaneCommon/OrvaneSettings.h"
#include "OrvaneCommon/OvULog.h"
#include "OrvaneCommon/OvUSystem.h"
#include "OrvaneCommon/OvUVersions.h"
#include "Support/HomeOfTest.h"
#include "Support/OvWriteLog.h"

namespace {

class OvULogTest : public testing::Test {
 protected:
  ~OvULogTest() override { OvSetLogFile(""); }
  // The log without the times and numbers that precede the messages.
  std::string messages() const {
    return std::regex_replace(contentOf(path_), std::regex("[-0-9]{10} [:0-9]{8}: [0-9]+:[0-9]+: "), "");
  }

  const HomeOfTest home_;
  const std::filesystem::path path_ = home_.path() / ".local/state/Orvane/Orvane.log";
};

TEST_F(OvULogTest, TheBannerOpensTheLogIfThePreferenceSaysSo) {
  setenv("LANGUAGE", "pt_BR:zh_TW.UTF-8", 1);
  setenv("LANG", "de_AT.UTF-8", 1);
  OrvaneSettings::instance().setNeededToLog(true);
  OvU_InitLogForModule("Orvane");
  OvWriteLog(6, "traced");
  EXPECT_EQ(messages(), "OvU_LogProductInformation: Current OS X version: " + orvane::operatingSystemDescription() +
                            "\nOvU_LogProductInformation: Connector version: " + OvU_GetConnectorVesrion() +
                            "\nOvU_LogProductInformation: Device: " + OvU_GetSystemInfo("hw.model") + " " +
                            OvU_GetSystemInfo("hw.machine") +
                            R"(
OvU_LogProductInformation: Language: this app is running in "zh-Hant"
Language: user's preferred language is "pt_BR"(pt_BR)
Language: user's preferred language NSLocaleLanguageCode = "de"
OvU_LogProductInformation: Current locale: de_AT.UTF-8
OvU_LogProductInformation: ================================================================
traced
)");
}

TEST_F(OvULogTest, OffLeavesNoFileAndTheSwitchLogsTheFlowWithoutABanner) {
  OrvaneSettings::instance().setNeededToLog(false);
  EXPECT_EQ(OvU_GetLogFilePathFor("Orvane"), path_);
  writeFile(path_, "from an earlier run\n");
  OvU_InitLogForModule("Orvane");
  OvWriteLog(2, "dropped");
  EXPECT_FALSE(std::filesystem::exists(path_));
  orvane::switchLogging(true);
  OvWriteLog(4, "flow");
  OvWriteLog(5, "tracing");
  EXPECT_EQ(messages(), "flow\n");
  orvane::switchLogging(false);
  EXPECT_FALSE(std::filesystem::exists(path_));
}

}  // namespace

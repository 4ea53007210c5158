#include <unistd.h>

#include "OrvaneCommon/OvUSystem.h"
#include "OrvaneCommon/OvUVersions.h"

namespace {

TEST(OvUSystem, ParametersAreReadByNameAndNothingElseIs) {
  EXPECT_EQ(OvU_GetSystemInfo("kernel.ostype"), "Linux");
  EXPECT_EQ(OvU_GetSystemInfo("kernel.pid_max"), std::to_string(std::stoi(OvU_GetSystemInfo("kernel.pid_max"))));
  EXPECT_NE(OvU_GetSystemInfo("hw.machine"), "");
  for (const char* none : {"", ".", "kernel", "kernel.absent", "kernel/ostype", "..kernel.ostype", "kernel..ostype",
                           ".kernel.ostype", "kernel.ostype.", "../sys.kernel.ostype"}) {
    EXPECT_EQ(OvU_GetSystemInfo(none), "") << none;
  }
}

TEST(OvUSystem, TheVersionIsTheFirstNumberOfTheRelease) {
  const std::pair<const char*, int> rows[] = {
      {"NAME=\"Debian GNU/Linux\"\nVERSION_ID=\"12\"\n", 12},
      {"VERSION_ID=22.04", 22},
      {"OLD_VERSION_ID=1\nVERSION_ID_LIKE=2\nVERSION_ID='9.3'\nVERSION_ID=10\n", 9},
      {"VERSION_ID=\"rolling\"", 0},
      {"VERSION_ID=-3", 0},
      {"VERSION_ID=99999999999", 0},
      {"VERSION_ID", 0},
      {"VERSION_ID=\"", 0},
      {"", 0},
  };
  for (const auto& [text, version] : rows) {
    EXPECT_EQ(orvane::majorVersion(orvane::osReleaseValue(text, "VERSION_ID")), version) << text;
  }
}

TEST(OvUVersions, AReleaseOfTwoPartsIsFilledUp) {
  const char* const rows[][3] = {
      {"8.6", "123", "8.6.0.123"}, {"8.6.1", "123", "8.6.1.123"}, {"8", "1", "8.1"}, {"8.6.1.2", "1", "8.6.1.2.1"}};
  for (const auto& [release, build, version] : rows) EXPECT_EQ(orvane::connectorVersion(release, build), version);
  EXPECT_THAT(OvU_GetVersionAndBuildEnglishString(), testing::MatchesRegex("Version [0-9]+(\\.[0-9]+)+ build [0-9]+"));
}

}  // namespace

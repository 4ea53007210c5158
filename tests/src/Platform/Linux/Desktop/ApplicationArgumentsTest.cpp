#include "Platform/Linux/Desktop/ApplicationArguments.h"

namespace {

using orvane::ApplicationArguments;
using testing::ElementsAre;
using testing::HasSubstr;
using Words = std::vector<std::string>;

ApplicationArguments sorted(const Words& words) { return orvane::sortArguments(words, "/home/a b"); }

TEST(ApplicationArguments, LinksStayAsTheyAreAndFilesBecomeAbsoluteAddresses) {
  const std::pair<const char*, const char*> rows[] = {
      {"orvane://host/path?a=%20b&c=ü", "orvane://host/path?a=%20b&c=ü"},
      {"HelperOrvane:x", "HelperOrvane:x"},
      {"/tmp/x.ovl", "file:///tmp/x.ovl"},
      {"x.ovl", "file:///home/a%20b/x.ovl"},
      {"../100% ü\xFF?#.ovl", "file:///home/a%20b/../100%25%20%C3%BC%FF%3F%23.ovl"},
      {"10:30.ovl", "file:///home/a%20b/10%3A30.ovl"},
      {"orvanex:y.ovl", "file:///home/a%20b/orvanex%3Ay.ovl"},
      {"FILE:/a%20b", "file:///a%20b"},
      {"file://localhost/a+b", "file:///a%2Bb"},
  };
  for (const auto& [word, address] : rows) {
    const ApplicationArguments arguments = sorted({word});
    EXPECT_EQ(arguments.error, "") << word;
    EXPECT_THAT(arguments.addresses, ElementsAre(address)) << word;
  }
}

TEST(ApplicationArguments, AFilesAddressGivesItsPathBack) {
  for (const std::string path : {"/a b/%41/ü/\xC3\xFF\n?#", "/", "/~x-y_z."}) {
    EXPECT_EQ(orvane::filePathOfAddress(sorted({path}).addresses.at(0)), path);
  }
  for (const char* address : {"file://elsewhere/a", "file:a", "file://", "file:///a%", "file:///a%4", "file:///a%4x",
                              "file:///a%00b", "http:///a", "/a", ""}) {
    EXPECT_EQ(orvane::filePathOfAddress(address), std::nullopt) << address;
    EXPECT_FALSE(orvane::isOpenableAddress(address)) << address;
  }
}

TEST(ApplicationArguments, RefusesWhatItDoesNotKnowByName) {
  const std::pair<Words, const char*> rows[] = {
      {{"--verbose"}, "option: --verbose"},
      {{"-x"}, "option: -x"},
      {{"-"}, "option: -"},
      {{"--preference"}, "option: --preference"},
      {{"a", "--about=x"}, "option: --about="},
      {{"http://example.com"}, "http://example.com"},
      {{"file://elsewhere/a"}, "elsewhere/a"},
      {{""}, "empty"},
      {{"--quit", "--about"}, "--quit and --about"},
  };
  for (const auto& [words, error] : rows) EXPECT_THAT(sorted(words).error, HasSubstr(error));
}

TEST(ApplicationArguments, OptionsStandAnywhereButBehindTwoDashes) {
  const ApplicationArguments arguments = sorted({"orvane:1", "--about", "--background", "--service", "--", "--quit"});
  EXPECT_EQ(arguments.error, "");
  EXPECT_EQ(arguments.action, "about");
  EXPECT_TRUE(arguments.isBackground && arguments.isService && !arguments.wantsHelp && !arguments.wantsVersion);
  EXPECT_THAT(arguments.addresses, ElementsAre("orvane:1", "file:///home/a%20b/--quit"));
  EXPECT_TRUE(sorted({"--help"}).wantsHelp && sorted({"-h"}).wantsHelp && sorted({"--version"}).wantsVersion);
}

}  // namespace

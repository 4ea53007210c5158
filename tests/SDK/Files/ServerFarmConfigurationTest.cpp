#include <climits>
#include <type_traits>

#include "Files/FarmAttributes.h"
#include "Files/ServerFarmConfiguration.h"

using namespace OvCommon;
using testing::ElementsAre;

namespace {

using Texts = std::deque<std::wstring>;

std::deque<OvFarmSettings> parsed(const std::string& text) {
  std::deque<OvFarmSettings> farms(7);
  EXPECT_TRUE(ParseConfigurationFile(text, farms)) << text.substr(0, 200);
  return farms;
}

std::string document(const std::string& attributes, const std::string& children = "") {
  return "<ServerFarms><Farm " + attributes + ">" + children + "</Farm></ServerFarms>";
}

OvFarmSettings farm(const std::string& attributes, const std::string& children = "") {
  return parsed(document(attributes, children)).at(0);
}

OvLocationSettings location(const std::string& attributes) {
  return farm("", "<Location " + attributes + "/>").Locations.at(0);
}

std::string administratorsPage() {
  std::ifstream file(ORVANE_DOCUMENTS "/farm-configuration.md");
  return {std::istreambuf_iterator<char>(file), {}};
}

// Gives each attribute in turn, alone, the value 12 in the form of its type.
template <typename Record>
void expectEachInItsOwnField(Record (*read)(const std::string& attributes)) {
  const std::string page = administratorsPage();
  const Record empty;
  orvane::forEachAttribute(empty, [&](const std::string& name, auto&) {
    Record expected;
    orvane::forEachAttribute(expected, [&](const std::string& other, auto& field) {
      using Field = std::remove_reference_t<decltype(field)>;
      if (other != name) return;
      if constexpr (std::is_arithmetic_v<Field>) {
        field = static_cast<Field>(12);
      } else {
        field = Field{L"12"};
      }
    });
    const Record record = read(name + "='12'");
    EXPECT_TRUE(record == expected && record != empty) << name;
    EXPECT_THAT(page, testing::HasSubstr("\n| `" + name + "` | "));
  });
}

TEST(ServerFarmConfiguration, EachAttributeLandsInItsOwnFieldAndIsDocumented) {
  expectEachInItsOwnField<OvFarmSettings>([](const std::string& attributes) { return farm(attributes); });
  expectEachInItsOwnField<OvLocationSettings>(location);
}

TEST(ServerFarmConfiguration, ValuesConvertOrCountAsNothing) {
  const std::pair<std::string, bool> switches[] = {{"1", true},     {"true", true}, {"Truth", true}, {"yes", true},
                                                   {"Y", true},     {"0", false},   {"no", false},   {"", false},
                                                   {" yes", false}, {"on", false},  {"2", false}};
  for (const auto& [value, on] : switches) {
    EXPECT_EQ(farm("FullScreen='" + value + "'").DisplaySettings.FullScreen, on) << value;
  }
  const std::pair<std::string, int> numbers[] = {
      {"-5", -5}, {" 7px", 7}, {"x", 0}, {"", 0}, {"0x10", 16}, {"99999999999", INT_MAX}, {"-99999999999", INT_MIN}};
  for (const auto& [value, number] : numbers) {
    EXPECT_EQ(farm("ColorDepth='" + value + "'").DisplaySettings.ColorDepth, number) << value;
  }
  std::string utf16 = "\xFF\xFE";
  for (const char letter : document("FarmName='a'")) utf16 += {letter, '\0'};
  const std::pair<std::string, std::wstring> names[] = {
      {document("farmname='a' FarmName='b&amp;&#x20AC;' FarmName='c'"), L"b&\u20ac"},
      {document("FarmName='\xC3\xA4\xF0\x9F\x98\x80'"), L"\u00e4\U0001f600"},
      {document("FarmName='a\xFF\xC3'"), L"a"},
      {"<?xml version='1.0' encoding='iso-8859-1'?>" + document("FarmName='\xE4'"), L"\u00e4"},
      {utf16, L"a"}};
  for (const auto& [text, name] : names) EXPECT_EQ(parsed(text).at(0).FarmName, name) << text;
}

TEST(ServerFarmConfiguration, FarmsAreFoundBelowTheRootsOfTheirNameOnly) {
  const std::pair<std::string, size_t> cases[] = {
      {"<ServerFarms/>", 0},
      {"<Root><ServerFarms><Farm/></ServerFarms></Root>", 0},
      {"<ServerFarms><Other/>text<farm/><Other><Farm/></Other></ServerFarms><serverfarms><Farm/></serverfarms>", 0},
      {"<ServerFarms><Farm/><Other/><Farm/></ServerFarms><x/><ServerFarms><Farm/></ServerFarms>", 3}};
  for (const auto& [text, count] : cases) EXPECT_EQ(parsed(text).size(), count) << text;
}

TEST(ServerFarmConfiguration, WhatIsNoXmlOrTooMuchLeavesTheFarmsAlone) {
  std::string nested;
  for (int i = 0; i < 300000; ++i) nested += "<a>";
  std::string many = "<ServerFarms>";
  for (int i = 0; i < 50001; ++i) many += "<Farm><a/></Farm>";
  many += "</ServerFarms>";
  const std::string texts[] = {"",
                               " \n",
                               "text",
                               "<!-- -->",
                               "<ServerFarms>",
                               "<ServerFarms></Farm>",
                               "<ServerFarms",
                               document("FarmName=b"),
                               std::string(9, '\0'),
                               "\xFF\xFE<",
                               nested,
                               many};
  std::deque<OvFarmSettings> before(2);
  before[0].FarmName = L"before";
  for (const std::string& text : texts) {
    std::deque<OvFarmSettings> farms = before;
    EXPECT_FALSE(ParseConfigurationFile(text, farms)) << text.substr(0, 50);
    EXPECT_TRUE(farms == before) << text.substr(0, 50);
  }
}

TEST(ServerFarmConfiguration, EveryChildIsALocationAndTheyAreSorted) {
  const auto locations = farm("", "<Location Number='3'/><x Number='1'/><!-- --><y Number='-2'/>text").Locations;
  std::vector<int> numbers;
  for (const auto& each : locations) numbers.push_back(each.Number);
  EXPECT_THAT(numbers, ElementsAre(-2, 0, 1, 3));
}

TEST(ServerFarmConfiguration, ApplicationsToLaunchAreNumberedWithoutAGap) {
  std::string many;
  for (int number = 100000; number > 0; --number) many += "AutoLaunchApp" + std::to_string(number) + "='a' ";
  const std::pair<std::string, Texts> cases[] = {
      {"AutoLaunchApp1='a' AutoLaunchApp3='c'", {L"a"}},
      {"AutoLaunchApp2='b' AutoLaunchApp1='a'", {L"a", L"b"}},
      {"AutoLaunchApp1='a' AutoLaunchApp2='' AutoLaunchApp3='c'", {L"a"}},
      {"AutoLaunchApp1='a' AutoLaunchApp2='\xE1' AutoLaunchApp3='c'", {L"a"}},
      {"AutoLaunchApp1='a' AutoLaunchApp1='b' autolaunchapp2='c' AutoLaunchApp02='d'", {L"a"}},
      {"AutoLaunchApp='x' AutoLaunchApp0='y'", {}},
      {many, Texts(100000, L"a")}};
  for (const auto& [attributes, applications] : cases) {
    EXPECT_TRUE(farm(attributes).AutoLaunchApps == applications) << attributes.substr(0, 100);
  }
  EXPECT_TRUE(farm("AutoLaunchApp1='a' AutoLaunchApp2='b'") != farm("AutoLaunchApp1='b' AutoLaunchApp2='a'"));
}

TEST(SplitString, KeepsWhatIsBetweenSeparators) {
  const struct {
    std::wstring text, separator;
    Texts items;
  } cases[] = {{L"", L",", {}},
               {L"a", L",", {L"a"}},
               {L"a,", L",", {L"a", L""}},
               {L"a, b", L",", {L"a", L" b"}},
               {L",,a", L",", {L"", L"", L"a"}},
               {L"a;;b;;;c", L";;", {L"a", L"b", L";c"}},
               {L"a", L"", {L"a"}}};
  for (const auto& row : cases) {
    Texts items = {L"old", row.text};
    SplitString(items[1], row.separator, items);
    EXPECT_EQ(items, row.items);
  }
  EXPECT_THAT(location("ServerList='a, b'").ServerList, ElementsAre(L"a", L" b"));
  EXPECT_THAT(location("ProxyBypassList=''").ProxyBypassList, ElementsAre());
}

}  // namespace

#include <cstdlib>
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Model/OvFarm.h"
#include "Support/TemporaryFolder.h"
#include "demo-broker/DemoBroker.h"

namespace {

using testing::ElementsAre;

std::shared_ptr<OvFarm> farmOf(const std::string& attributes, const std::string& locations = "") {
  const std::string data = "<ServerFarms><Farm " + attributes + ">" + locations + "</Farm></ServerFarms>";
  return OvFarm::farmFromXmlConfigData(&data);
}

TEST(FarmFromConfigurationTest, WhatHasNoFarmGivesNone) {
  EXPECT_EQ(OvFarm::farmFromXmlConfigData(nullptr), nullptr);
  for (const std::string data : {"", "<html>", "<ServerFarms/>"}) {
    EXPECT_EQ(OvFarm::farmFromXmlConfigData(&data), nullptr) << data;
  }
  const std::string two = "<ServerFarms><Farm FarmName='first'/><Farm FarmName='second'/></ServerFarms>";
  EXPECT_EQ(OvFarm::farmFromXmlConfigData(&two)->name(), "first");
}

TEST(FarmFromConfigurationTest, TextsAndLists) {
  const auto farm = farmOf(
      "FarmName='Überseehafen 🚢' FarmDBGUID='{F}' ConfigName='c' ConfigDBGUID='{C}' ConfigTimestamp='20'"
      " UserDomain='HAFEN' DisableUserDomain='1' DisallowSaveCredentials='1' AnonymousLogin='1' DefaultLocation='2'"
      " AutoLaunchApp1='Mail' AutoLaunchApp2='Plan'",
      "<Location Number='2' Name='B' Protocol='2' ProxyBypassList=',b'/>"
      "<Location Number='1' Name='A' EnableNAT='1' RDPonSSL='1' TCPPort='443' ProxyServer='p' SSLGateway='g'"
      " Protocol='1' ProxyBypassList='x,y' ServerList='s1,s2'/>");
  EXPECT_EQ(farm->name(), "Überseehafen 🚢");
  EXPECT_EQ(farm->farmDBGUID() + farm->configName() + farm->configDBGUID() + farm->configTimestamp(), "{F}c{C}20");
  EXPECT_EQ(farm->credentials().preferredDomain(), "HAFEN");
  EXPECT_TRUE(farm->credentials().disableUserDomain() && farm->disallowSaveCredentials() && farm->anonymousLogin());
  EXPECT_FALSE(farm->doReconnect());
  EXPECT_TRUE(farm->serverCreated());
  EXPECT_EQ(farm->defaultLocationIndex(), 1);
  EXPECT_THAT(farm->autoLaunchApps(), ElementsAre("Mail", "Plan"));

  OvLocation first;
  first.setName("A");
  first.setDoUseNatSupport(true);
  first.setDoUseSsl(true);
  first.setPort(443);
  first.setProxyServer("p");
  first.setSslGateway("g");
  first.setProtocol(1);
  first.setExclusiveServers("x;y");
  first.setBrokers({"s1", "s2"});
  OvLocation second;
  second.setName("B");
  second.setPort(0);
  second.setExclusiveServers(";b");
  ASSERT_EQ(farm->locations().size(), 2u);
  EXPECT_TRUE(*farm->locations()[0] == first);
  EXPECT_TRUE(*farm->locations()[1] == second);
}

struct SwitchRow {
  const char* attribute;
  bool (*get)(const OvFarm&);
};

#define GET(getter) [](const OvFarm& farm) { return farm.getter; }

constexpr SwitchRow kSwitches[] = {
    {"AutoReconnect", GET(doReconnect())},
    {"SpanMonitors", GET(display().spanMonitors())},
    {"SeamlessMode", GET(display().seamless())},
    {"RedirectDrives", GET(resourses().doRedirectDiskDrives())},
    {"RedirectComPorts", GET(resourses().doRedirectSerialPorts())},
    {"RedirectClipboard", GET(resourses().doRedirectClipboard())},
    {"RedirectPrinters", GET(resourses().doRedirectPrinters())},
    {"RedirectSmartCards", GET(resourses().doRedirectSmartcards())},
    {"EnableBitmapCaching", GET(performance().doUseBitmapCaching())},
    {"EnableWallpaper", GET(performance().doShowDesktopBackground())},
    {"EnableAnimation", GET(performance().doUseAnimation())},
    {"EnableFullWindowDrag", GET(performance().doShowWindowContent())},
    {"EnableThemes", GET(performance().doUseThemes())},
    {"EnableFontSmoothing", GET(performance().doUseFontSmoothing())},
    {"EnableDesktopComposition", GET(performance().doUseDesktopComposition())},
    {"EnableGraphicsAcceleration", GET(performance().doUseGA())},
    {"EnableFlashRedirection", GET(performance().doFlashMMR())},
    {"EnableWANAcceleration", GET(performance().doUseSurge())},
};

TEST(FarmFromConfigurationTest, EachSwitchComesFromItsOwnAttribute) {
  for (const SwitchRow& turned : kSwitches) {
    const auto farm = farmOf(std::string(turned.attribute) + "='1'");
    for (const SwitchRow& other : kSwitches) {
      EXPECT_EQ(other.get(*farm), &other == &turned) << other.attribute << " with " << turned.attribute;
    }
  }
}

struct NumberRow {
  const char* attributes;
  int32_t expected;
  int32_t (*get)(const OvFarm&);
};

constexpr NumberRow kNumbers[] = {
    {"DefaultLocation='0'", -1, GET(defaultLocationIndex())},
    {"DefaultLocation='-2147483648'", -1, GET(defaultLocationIndex())},
    {"NetworkConnectionType='0'", 1, GET(performance().connectionSpeed())},
    {"NetworkConnectionType='7'", 7, GET(performance().connectionSpeed())},
    {"AudioMode='2'", 2, GET(resourses().sound())},
    {"AudioMode='3'", 0, GET(resourses().sound())},
    {"KeyboardHook='1'", 1, GET(resourses().keyboard())},
    {"KeyboardHook='-1'", 0, GET(resourses().keyboard())},
    {"ColorDepth='16'", 16, GET(display().color())},
    {"FullScreen='1' DesktopWidth='1280' DesktopHeight='800'", 800, GET(display().width())},
    {"FullScreen='1' DesktopWidth='1280' DesktopHeight='800'", 0, GET(display().customHeight())},
    {"DesktopWidth='1280' DesktopHeight='801'", 1280, GET(display().width())},
    {"DesktopWidth='1280' DesktopHeight='801'", 1280, GET(display().customWidth())},
    {"DesktopWidth='1280' DesktopHeight='801'", 801, GET(display().height())},
    {"DesktopWidth='1280' DesktopHeight='801'", 801, GET(display().customHeight())},
};

#undef GET

TEST(FarmFromConfigurationTest, NumbersKeepTheirMeaning) {
  for (const NumberRow& row : kNumbers) EXPECT_EQ(row.get(*farmOf(row.attributes)), row.expected) << row.attributes;
}

TEST(FarmFromConfigurationTest, AFarmComesFromTheWebAndLeavesNoFile) {
  const TemporaryFolder runtime;
  setenv("XDG_RUNTIME_DIR", runtime.path().c_str(), 1);
  orvane::demo::FarmDescription description;
  description.files = {{"farm.xml", "text/xml", "<ServerFarms><Farm FarmName='Harbour'/></ServerFarms>"}};
  const orvane::demo::DemoBroker broker(description);
  const auto farm = OvFarm::farmFromUrl(broker.url() + "/farm.xml");
  ASSERT_NE(farm, nullptr);
  EXPECT_EQ(farm->name(), "Harbour");
  EXPECT_EQ(OvFarm::farmFromUrl(broker.url() + "/absent.xml"), nullptr);
  writeFile(runtime.file("local.xml"), "<ServerFarms><Farm FarmName='Local'/></ServerFarms>");
  EXPECT_EQ(OvFarm::farmFromUrl("file://" + runtime.file("local.xml")), nullptr);
  for (const auto& entry : std::filesystem::recursive_directory_iterator(runtime.path())) {
    EXPECT_TRUE(entry.is_directory() || entry.path().filename() == "local.xml") << entry.path();
  }
}

TEST(FarmFromConfigurationTest, WideTextThatIsNoTextIsEmpty) {
  EXPECT_EQ(OvFarm::nsStringFromWstring(L"給与\x1F6A2"), "給与🚢");
  EXPECT_EQ(OvFarm::nsStringFromWstring(L"a\xD800"), "");
  EXPECT_EQ(OvFarm::nsStringFromWstring(std::wstring(1, wchar_t{0x110000})), "");
}

}  // namespace

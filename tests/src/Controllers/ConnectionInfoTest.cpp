#include <gtest/gtest.h>

#include "Controllers/ManagedConnectionInfoViewController.h"
#include "Controllers/ManualConnectionInfoViewController.h"
#include "Support/HomeOfTest.h"
#include "Support/PumpedQueue.h"
#include "demo-broker/DemoBroker.h"

namespace {

using Line = ManualConnectionInfoLine;

TEST(ManagedConnectionInfoTest, PoliciesAreReadOnTheFarmsQueueAndNamedInTheirOrder) {
  const std::pair<const char*, const char*> rows[] = {{"redirectclipboard", "Clipboard"},
                                                      {"redirectdrives", "Drives"},
                                                      {"redirectprinters", "Printers"},
                                                      {"redirectuniversalprinters", "Universal printing"},
                                                      {"redirectaudio", "Audio"},
                                                      {"redirectmicrophone", "Microphone"},
                                                      {"redirectcomports", "Serial ports"},
                                                      {"enablebitmapacceleration", "Graphics acceleration"},
                                                      {"enableflashredirection", "Flash acceleration"},
                                                      {"enablenetworkoptimization", "WAN acceleration"}};
  const HomeOfTest home;
  const auto mainQueue = std::make_shared<PumpedQueue>(), farmQueue = std::make_shared<PumpedQueue>();
  const auto info = std::make_shared<ManagedConnectionInfoViewController>(mainQueue);
  OvFarm farm([&] { return farmQueue; });
  farm.setName("Harbour");
  farm.setConfigName("Staff");
  farm.setConfigTimestamp("May");
  farm.setServerCreated(true);
  orvane::demo::FarmDescription description;
  description.users = {{"", "jo", "any", {}, {}}};
  std::string names;
  for (const auto& [element, name] : rows) {
    description.policies.emplace_back(element, "0");
    const orvane::demo::DemoBroker broker(description);
    OvBrokerClient& client = *farm.brokerClient();
    client.setURL(broker.url());
    client.setUsername("jo");
    client.setPassword("any");
    client.authenticate();
    info->setupWithFarm(farm);
    EXPECT_EQ(mainQueue->pump(), 0U);
    farmQueue->pump();
    EXPECT_EQ(info->policyNames(), "None");
    mainQueue->pump();
    names += (names.empty() ? "" : "\n") + std::string(name);
    EXPECT_EQ(info->policyNames(), names);
  }
  EXPECT_EQ(info->connectionName() + info->configName() + info->configTimestamp(), "HarbourStaffMay");
  EXPECT_EQ(info->connectionType(), "Managed connection");

  info->setupWithFarm(farm);
  farmQueue->pump();
  info->setupWithFarm(OvFarm([] { return std::make_shared<PumpedQueue>(); }));
  mainQueue->pump();
  EXPECT_EQ(info->policyNames(), "None") << "another farm is shown by now";
}

#define SET(expression) [](OvFarm& farm) { farm.expression; }

TEST(ManualConnectionInfoTest, EachLineTellsItsOwnValue) {
  const HomeOfTest home;
  const struct {
    void (*change)(OvFarm&);
    Line line;
    const char* text;
  } rows[] = {
      {SET(setName("Harbour")), Line::kName, "Harbour"},
      {SET(setServerCreated(true)), Line::kType, "Managed connection"},
      {SET(credentials().setUsername("jo"); farm.credentials().setDomain("H")), Line::kCredentials, "H\\jo"},
      {SET(credentials().setUsername("jo@h"); farm.credentials().setDomain("H")), Line::kCredentials, "jo@h"},
      {SET(setDisallowSaveCredentials(true)), Line::kDisallowSaveCredentials, "Yes"},
      {SET(display().setFullscreen(false)), Line::kResolution, "800 × 600"},
      {SET(display().setColor(8)), Line::kColors, "256 colors"},
      {SET(display().setColor(15)), Line::kColors, "High color (15-bit)"},
      {SET(display().setColor(16)), Line::kColors, "High color (16-bit)"},
      {SET(display().setColor(0)), Line::kColors, "Highest quality (32-bit)"},
      {SET(display().setSeamless(false)), Line::kSeamless, "No"},
      {SET(resourses().setSound(1)), Line::kSound, "No"},
      {SET(resourses().setDoRedirectClipboard(true)), Line::kRedirections, "Clipboard"},
      {SET(resourses().setDoRedirectDiskDrives(true)), Line::kRedirections, "Drives"},
      {SET(resourses().setDoRedirectPrinters(true)), Line::kRedirections, "Printers"},
      {SET(resourses().setDoRedirectSerialPorts(true)), Line::kRedirections, "Serial ports"},
      {SET(performance().setConnectionSpeed(1)), Line::kSpeed, "Modem"},
      {SET(performance().setDoUseGA(true)), Line::kExperience, "Graphics acceleration\nAutomatic reconnection"},
      {SET(performance().setDoUseSurge(true)), Line::kExperience, "WAN acceleration\nAutomatic reconnection"},
      {SET(performance().setDoFlashMMR(true)), Line::kExperience, "Flash acceleration\nAutomatic reconnection"},
      {SET(setDoReconnect(false)), Line::kExperience, "None"},
      {SET(setDoAutoLaunch(true)), Line::kAutoLaunch, "Yes"},
  };
  ManualConnectionInfoViewController plain, info;
  plain.setupWithFarm(OvFarm());
  EXPECT_EQ(plain.text(Line::kCredentials) + plain.text(Line::kResolution), "NoneFull screen");
  for (const auto& row : rows) {
    OvFarm farm;
    row.change(farm);
    info.setupWithFarm(farm);
    for (int line = 0; line <= static_cast<int>(Line::kAutoLaunch); ++line) {
      const auto each = static_cast<Line>(line);
      EXPECT_EQ(info.text(each), each == row.line ? row.text : plain.text(each)) << row.text << " in line " << line;
    }
  }
}

#undef SET

TEST(ManualConnectionInfoTest, LocationsAreItemsOfTheirOwn) {
  const HomeOfTest home;
  OvFarm farm;
  ManualConnectionInfoViewController info;
  const auto last = [&] {
    info.setupWithFarm(farm);
    const auto& item = info.locations().back();
    return item.title() + " " + item.protocol() + " " + item.port() + " " + item.servers() + " " + item.natSupport() +
           " " + item.rdpOverSsl() + " " + item.proxy();
  };
  OvLocation site;
  site.setName("Site");
  site.setBrokers({"a", "b"});
  site.setProtocol(1);
  site.setDoUseNatSupport(true);
  farm.addLocation(std::make_shared<OvLocation>(site));
  EXPECT_EQ(last(), "Site [Default] HTTPS 8080 a\nb Yes No No");
  site.setDoUseSsl(true);
  site.setDoUseNatSupport(false);
  site.setProxyServer("proxy:3128");
  farm.addLocation(std::make_shared<OvLocation>(site));
  EXPECT_EQ(last(), "Site HTTPS 8080 a\nb No Yes proxy:3128") << "with two, none is used without asking";
  EXPECT_EQ(info.locations().size(), 2U);
}

}  // namespace

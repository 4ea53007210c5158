#include <gtest/gtest.h>

#include "Model/OvFarm.h"
#include "demo-broker/DemoBroker.h"

namespace {

struct Switch {
  const char* name;
  void (*turn)(OvFarm&, bool);
  bool (OvBrokerClient::*get)() const;
  const char* policy = nullptr;  // the broker's element that fixes it
};

#define TURN(setter) [](OvFarm& farm, bool value) { farm.setter(value); }

constexpr Switch kSwitches[] = {
    {"span", TURN(display().setSpanMonitors), &OvBrokerClient::getSpanMonitors},
    {"fullscreen", TURN(display().setFullscreen), &OvBrokerClient::getFullScreen},
    {"clipboard", TURN(resourses().setDoRedirectClipboard), &OvBrokerClient::getRedirectClipboard, "redirectclipboard"},
    {"cards", TURN(resourses().setDoRedirectSmartcards), &OvBrokerClient::getRedirectSmartCards, "redirectsmartcards"},
    {"drives", TURN(resourses().setDoRedirectDiskDrives), &OvBrokerClient::getRedirectDrives, "redirectdrives"},
    {"ports", TURN(resourses().setDoRedirectSerialPorts), &OvBrokerClient::getRedirectComPorts, "redirectcomports"},
    {"printers", TURN(resourses().setDoRedirectPrinters), &OvBrokerClient::getRedirectPrinters, "redirectprinters"},
    {"cache", TURN(performance().setDoUseBitmapCaching), &OvBrokerClient::getEnableBitmapCaching},
    {"wallpaper", TURN(performance().setDoShowDesktopBackground), &OvBrokerClient::getEnableWallpaper},
    {"animation", TURN(performance().setDoUseAnimation), &OvBrokerClient::getEnableAnimation},
    {"drag", TURN(performance().setDoShowWindowContent), &OvBrokerClient::getEnableFullWindowDrag},
    {"themes", TURN(performance().setDoUseThemes), &OvBrokerClient::getEnableThemes},
    {"fonts", TURN(performance().setDoUseFontSmoothing), &OvBrokerClient::getEnableFontSmoothing},
    {"composition", TURN(performance().setDoUseDesktopComposition), &OvBrokerClient::getEnableDesktopComposition},
    {"surge", TURN(performance().setDoUseSurge), &OvBrokerClient::getEnableNetworkOptimization,
     "enablenetworkoptimization"},
    {"acceleration", TURN(performance().setDoUseGA), &OvBrokerClient::getEnableBitmapAcceleration,
     "enablebitmapacceleration"},
    {"reconnect", TURN(setDoReconnect), &OvBrokerClient::getEnableAutoReconnection},
};

#undef TURN

TEST(FarmClientSettingsTest, EachSwitchReachesTheClientsOwn) {
  for (const Switch& turned : kSwitches) {
    OvFarm farm;
    for (const Switch& other : kSwitches) other.turn(farm, false);
    turned.turn(farm, true);
    farm.setCurrentApplicationSettings();
    for (const Switch& other : kSwitches) {
      EXPECT_EQ((*farm.brokerClient().*other.get)(), &other == &turned) << other.name << " with " << turned.name;
    }
  }
}

TEST(FarmClientSettingsTest, NumbersReachTheClient) {
  OvFarm farm;
  farm.display().setColor(16);
  farm.display().setWidth(1024);
  farm.display().setHeight(768);
  farm.resourses().setSound(1);
  farm.performance().setConnectionSpeed(3);
  farm.setCurrentApplicationSettings();
  const auto client = farm.brokerClient();
  EXPECT_EQ(client->getClientBitsPerPixel(), 16);
  EXPECT_EQ(client->getSessionBitsPerPixel(), 16);
  EXPECT_EQ(client->getSeamlessMode(), 2);
  EXPECT_EQ(client->getAudioRedirectionMode(), 1);
  EXPECT_EQ(client->getConnectionType(), 3);
  EXPECT_EQ(client->getDesktopWidth(), 0) << "full screen";

  farm.display().setFullscreen(false);
  farm.display().setSeamless(false);
  farm.setCurrentApplicationSettings();
  EXPECT_EQ(client->getDesktopWidth(), 1024);
  EXPECT_EQ(client->getDesktopHeight(), 768);
  EXPECT_EQ(client->getSeamlessMode(), 0);
}

TEST(FarmClientSettingsTest, WhatTheBrokerFixedStays) {
  orvane::demo::FarmDescription description;
  description.users = {{"", "jo", "any", {}, {}}};
  description.policies = {{"redirectaudio", "4"}, {"enableflashredirection", "1"}};
  for (const Switch& each : kSwitches) {
    if (each.policy != nullptr) description.policies.emplace_back(each.policy, "1");
  }
  const orvane::demo::DemoBroker broker(description);

  OvFarm farm;
  OvBrokerClient& client = *farm.brokerClient();
  client.setURL(broker.url());
  client.setUsername("jo");
  client.setPassword("any");
  client.authenticate();
  for (const Switch& each : kSwitches) each.turn(farm, false);
  farm.setCurrentApplicationSettings();
  EXPECT_EQ(client.getAudioRedirectionMode(), 2);
  EXPECT_TRUE(client.getEnableFlashRedirection());
  for (const Switch& each : kSwitches) EXPECT_EQ((client.*each.get)(), each.policy != nullptr) << each.name;
}

}  // namespace

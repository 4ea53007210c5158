#include "Model/OvFarm.h"
#include "OrvaneCommon/OvUPaths.h"

namespace {

// What a farm wants for its sessions, and how the client takes it. A row with `isFixed` is left out when the broker has
// fixed the value.
template <class Value>
struct SettingRow {
  void (OvBrokerClient::*set)(Value);
  Value (*wanted)(const OvFarm&);
  bool (OvBrokerClient::*isFixed)() const = nullptr;
};

using Client = OvBrokerClient;

#define ORVANE_WANTED(expression) [](const OvFarm& farm) { return expression; }

constexpr SettingRow<int> kNumbers[] = {
    {&Client::setClientBitsPerPixel, ORVANE_WANTED(farm.display().color())},
    {&Client::setSessionBitsPerPixel, ORVANE_WANTED(farm.display().color())},
    {&Client::setSeamlessMode, ORVANE_WANTED(farm.display().seamless() ? 2 : 0)},
    {&Client::setAudioRedirectionMode, ORVANE_WANTED(farm.resourses().sound()), &Client::getAudioRedirectionModePolicy},
    {&Client::setConnectionType, ORVANE_WANTED(farm.performance().connectionSpeed())},
};

constexpr SettingRow<bool> kSwitches[] = {
    {&Client::setFullScreen, ORVANE_WANTED(farm.display().fullscreen())},
    {&Client::setSpanMonitors, ORVANE_WANTED(farm.display().spanMonitors())},
    {&Client::setRedirectClipboard, ORVANE_WANTED(farm.resourses().doRedirectClipboard()),
     &Client::getRedirectClipboardPolicy},
    {&Client::setRedirectSmartCards, ORVANE_WANTED(farm.resourses().doRedirectSmartcards()),
     &Client::getRedirectSmartCardsPolicy},
    {&Client::setRedirectDrives, ORVANE_WANTED(farm.resourses().doRedirectDiskDrives()),
     &Client::getRedirectDrivesPolicy},
    {&Client::setRedirectComPorts, ORVANE_WANTED(farm.resourses().doRedirectSerialPorts()),
     &Client::getRedirectComPortsPolicy},
    {&Client::setRedirectPrinters, ORVANE_WANTED(farm.resourses().doRedirectPrinters()),
     &Client::getRedirectPrintersPolicy},
    {&Client::setEnableBitmapCaching, ORVANE_WANTED(farm.performance().doUseBitmapCaching())},
    {&Client::setEnableWallpaper, ORVANE_WANTED(farm.performance().doShowDesktopBackground())},
    {&Client::setEnableAnimation, ORVANE_WANTED(farm.performance().doUseAnimation())},
    {&Client::setEnableFullWindowDrag, ORVANE_WANTED(farm.performance().doShowWindowContent())},
    {&Client::setEnableThemes, ORVANE_WANTED(farm.performance().doUseThemes())},
    {&Client::setEnableFontSmoothing, ORVANE_WANTED(farm.performance().doUseFontSmoothing())},
    {&Client::setEnableDesktopComposition, ORVANE_WANTED(farm.performance().doUseDesktopComposition())},
    {&Client::setEnableNetworkOptimization, ORVANE_WANTED(farm.performance().doUseSurge()),
     &Client::getEnableNetworkOptimizationPolicy},
    {&Client::setEnableBitmapAcceleration, ORVANE_WANTED(farm.performance().doUseGA()),
     &Client::getEnableBitmapAccelerationPolicy},
    {&Client::setEnableFlashRedirection, ORVANE_WANTED(farm.performance().doFlashMMR() && OvU_IsFlashPlayerInstalled()),
     &Client::getEnableFlashRedirectionPolicy},
    {&Client::setEnableAutoReconnection, ORVANE_WANTED(farm.doReconnect())},
};

#undef ORVANE_WANTED

template <class Value, size_t size>
void apply(const SettingRow<Value> (&rows)[size], const OvFarm& farm, OvBrokerClient& client) {
  for (const auto& row : rows) {
    if (row.isFixed == nullptr || !(client.*row.isFixed)()) (client.*row.set)(row.wanted(farm));
  }
}

}  // namespace

void OvFarm::setCurrentApplicationSettings() {
  OvBrokerClient& client = *brokerClient();
  apply(kNumbers, *this, client);
  apply(kSwitches, *this, client);
  if (!display().fullscreen()) {
    client.setDesktopWidth(display().width());
    client.setDesktopHeight(display().height());
  }
}

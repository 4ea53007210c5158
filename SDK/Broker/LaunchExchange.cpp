// From an application's name to the record of the session that is to be started.

#include "Broker/SessionExchange.h"

namespace {

constexpr int kDesktop = 2;

// The command line of the session: a desktop is its shell; else only the path is quoted, the arguments stand as sent.
std::string programLine(int appType, const std::string& path, const std::string& arguments) {
  if (appType == kDesktop) return "explorer.exe";
  const std::string quoted = "\"" + path + "\"";
  return arguments.empty() ? quoted : quoted + " " + arguments;
}

}  // namespace

// A setting that goes from the client into the record as it is.
struct OvBrokerClient::SessionSetting {
  template <typename Value, typename Argument>
  struct Row {
    void (OvSettings::*set)(Argument);
    Value OvBrokerClient::*field;
  };
  static const Row<bool, bool> kSwitches[];
  static const Row<int, int> kNumbers[];
  static const Row<std::string, const char*> kTexts[];
};

constexpr OvBrokerClient::SessionSetting::Row<bool, bool> OvBrokerClient::SessionSetting::kSwitches[] = {
    {&OvSettings::setUseProxy, &OvBrokerClient::useProxy_},
    {&OvSettings::setEnableSSO, &OvBrokerClient::enableSSO_},
    {&OvSettings::setEnableKerberos, &OvBrokerClient::enableKerberos_},
    {&OvSettings::setFullScreen, &OvBrokerClient::fullScreen_},
    {&OvSettings::setSmartSizing, &OvBrokerClient::smartSizing_},
    {&OvSettings::setDisplayConnectionBar, &OvBrokerClient::displayConnectionBar_},
    {&OvSettings::setPinConnectionBar, &OvBrokerClient::pinConnectionBar_},
    {&OvSettings::setSpanMonitors, &OvBrokerClient::spanMonitors_},
    {&OvSettings::setRedirectClipboard, &OvBrokerClient::redirectClipboard_},
    {&OvSettings::setRedirectComPorts, &OvBrokerClient::redirectComPorts_},
    {&OvSettings::setRedirectDrives, &OvBrokerClient::redirectDrives_},
    {&OvSettings::setRedirectMicrophone, &OvBrokerClient::redirectMicrophone_},
    {&OvSettings::setRedirectPrinters, &OvBrokerClient::redirectPrinters_},
    {&OvSettings::setRedirectSmartcards, &OvBrokerClient::redirectSmartCards_},
    {&OvSettings::setRedirectUniversalPrinters, &OvBrokerClient::redirectUniversalPrinters_},
    {&OvSettings::setRedirectUSB, &OvBrokerClient::redirectUSB_},
    {&OvSettings::setEnableAutoReconnection, &OvBrokerClient::enableAutoReconnection_},
    {&OvSettings::setEnableBitmapAcceleration, &OvBrokerClient::enableBitmapAcceleration_},
    {&OvSettings::setEnableLocalTextEcho, &OvBrokerClient::enableLocalTextEcho_},
    {&OvSettings::setEnableFlashRedirection, &OvBrokerClient::enableFlashRedirection_},
    {&OvSettings::setEnableMultimediaRedirection, &OvBrokerClient::enableMultimediaRedirection_},
    {&OvSettings::setEnableBitmapCaching, &OvBrokerClient::enableBitmapCaching_},
    {&OvSettings::setEnableWallpaper, &OvBrokerClient::enableWallpaper_},
    {&OvSettings::setEnableAnimation, &OvBrokerClient::enableAnimation_},
    {&OvSettings::setEnableFullWindowDrag, &OvBrokerClient::enableFullWindowDrag_},
    {&OvSettings::setEnableThemes, &OvBrokerClient::enableThemes_},
    {&OvSettings::setEnableDesktopComposition, &OvBrokerClient::enableDesktopComposition_},
    {&OvSettings::setEnableFontSmoothing, &OvBrokerClient::enableFontSmoothing_},
};

constexpr OvBrokerClient::SessionSetting::Row<int, int> OvBrokerClient::SessionSetting::kNumbers[] = {
    {&OvSettings::setDesktopWidth, &OvBrokerClient::desktopWidth_},
    {&OvSettings::setDesktopHeight, &OvBrokerClient::desktopHeight_},
    {&OvSettings::setSessionBitsPerPixel, &OvBrokerClient::sessionBitsPerPixel_},
    {&OvSettings::setAudioMode, &OvBrokerClient::audioRedirectionMode_},
    {&OvSettings::setKeyboardHook, &OvBrokerClient::keyboardHookMode_},
    {&OvSettings::setConnectionType, &OvBrokerClient::connectionType_},
};

constexpr OvBrokerClient::SessionSetting::Row<std::string, const char*> OvBrokerClient::SessionSetting::kTexts[] = {
    {&OvSettings::setFarmName, &OvBrokerClient::farmName_},
    {&OvSettings::setSSLGateway, &OvBrokerClient::sslGateway_},
    {&OvSettings::setProxyServer, &OvBrokerClient::proxyServer_},
    {&OvSettings::setProxyBypass, &OvBrokerClient::proxyBypass_},
    {&OvSettings::setDomain, &OvBrokerClient::domain_},
    {&OvSettings::setUsername, &OvBrokerClient::username_},
    {&OvSettings::setDrivesToRedirect, &OvBrokerClient::drivesToRedirect_},
    {&OvSettings::setConnectorType, &OvBrokerClient::connectorType_},
    {&OvSettings::setWebSiteName, &OvBrokerClient::webSiteName_},
};

void OvBrokerClient::applySessionSettings(OvSettings& record) const {
  for (const auto& row : SessionSetting::kSwitches) (record.*row.set)(this->*row.field);
  for (const auto& row : SessionSetting::kNumbers) (record.*row.set)(this->*row.field);
  for (const auto& row : SessionSetting::kTexts) (record.*row.set)((this->*row.field).c_str());
}

std::unique_ptr<OvSettings> OvBrokerClient::launchApplication(const std::string& appName) {
  auto record = std::make_unique<OvSettings>();
  run({.message = "launchapplication",
       .operation = "launchApplication",
       .describe = [&](orvane::RequestDocument& request) { request.add("appname", appName); },
       .deliver =
           [&](const orvane::ResponseFields& response) {
             const auto text = [&](const char* element) { return response.text(element).value_or(""); };
             const auto flag = [&](const char* element, int missing) {
               return response.number(element).value_or(missing) != 0;
             };
             const int appType = response.number("apptype").value_or(1);
             const int protocol = response.number("protocol").value_or(0);
             const std::string shortcut = text("shortcut");
             const std::string ticket = text("ticket");
             int seamless = seamlessMode_ != 0 ? response.number("seamlessmode").value_or(seamlessMode_) : 0;
             if (appType == kDesktop) seamless = 0;

             record->setServerName(text("servername").c_str());
             record->setServerAddr(text("serveraddr").c_str());
             record->setConnectingText((shortcut.empty() ? appName : shortcut).c_str());
             record->setProgramFullPath(programLine(appType, text("path"), text("arguments")).c_str());
             record->setProgramWorkingDir(text("workingdir").c_str());
             record->setDNAProxy(enableNetworkOptimization_ ? text("dnaproxy").c_str() : "");
             record->setAppType(appType);
             record->setSessionSharing(flag("sessionsharing", 1));
             record->setConnectToConsole(flag("console", 0));
             record->setCompression(flag("compression", 1));
             record->setProtocol(protocol);
             record->setDeleteFile(true);
             if (protocol == 0 && !ticket.empty()) {
               record->setTicket(ticket.c_str());
             } else {
               record->setPassword(password_.c_str());
             }
             record->setSeamless(seamless);
             applySessionSettings(*record);
           }});
  return record;
}

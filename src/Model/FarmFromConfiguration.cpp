#include <algorithm>
#include <deque>
#include <optional>
#include <pugixml.hpp>
#include <string_view>

#include "Files/ServerFarmConfiguration.h"
#include "Http/Downloads.h"
#include "Model/OvFarm.h"
#include "OrvaneCommon/OvUPaths.h"
#include "OrvaneCommon/WebAddress.h"
#include "Platform/TemporaryFile.h"
#include "Support/FileReplacement.h"
#include "Support/OvWriteLog.h"

namespace {

// The program's folder for such files, or if somebody else has taken that the one that all users share: a file of a
// random name that is the user's alone and soon gone is safe there too.
std::string folderOfPrivateFiles() {
  const std::string folder = OvU_GetTempDirPath();
  return folder.empty() ? "/tmp" : folder;
}

bool isCodePoint(wchar_t unit) {
  const auto point = static_cast<char32_t>(unit);  // of a type that may have a sign or not
  return point <= 0x10FFFF && (point < 0xD800 || point > 0xDFFF);
}

std::string joined(const std::deque<std::wstring>& texts, const char* separator) {
  std::string result;
  for (size_t index = 0; index < texts.size(); ++index) {
    if (index > 0) result += separator;
    result += OvFarm::nsStringFromWstring(texts[index]);
  }
  return result;
}

std::vector<std::string> asList(const std::deque<std::wstring>& texts) {
  std::vector<std::string> result;
  result.reserve(texts.size());
  std::ranges::transform(texts, std::back_inserter(result), OvFarm::nsStringFromWstring);
  return result;
}

void takeDisplay(const OvCommon::OvFarmSettings::Display_Settings& from, OvDisplay& display) {
  display.setColor(from.ColorDepth);
  display.setFullscreen(from.FullScreen);
  if (!from.FullScreen) {
    display.setWidth(from.DesktopWidth);
    display.setCustomWidth(from.DesktopWidth);
    display.setHeight(from.DesktopHeight);
    display.setCustomHeight(from.DesktopHeight);
  }
  display.setSpanMonitors(from.SpanMonitors);
  display.setSeamless(from.SeamlessMode != 0);
}

void takeResources(const OvCommon::OvFarmSettings::Local_Resources& from, OvResources& resources) {
  const auto isKnownMode = [](int mode) { return mode >= 0 && mode <= 2; };
  resources.setDoRedirectDiskDrives(from.RedirectDrives);
  resources.setDoRedirectSerialPorts(from.RedirectComPorts);
  resources.setDoRedirectClipboard(from.RedirectClipboard);
  resources.setDoRedirectPrinters(from.RedirectPrinters);
  resources.setDoRedirectSmartcards(from.RedirectSmartCards);
  if (isKnownMode(from.AudioMode)) resources.setSound(from.AudioMode);
  if (isKnownMode(from.KeyboardHook)) resources.setKeyboard(from.KeyboardHook);
}

void takePerformance(const OvCommon::OvFarmSettings::User_Experience& from, OvPerformance& performance) {
  constexpr int kModem = 1;
  performance.setConnectionSpeed(from.NetworkConnectionType == 0 ? kModem : from.NetworkConnectionType);
  performance.setDoUseBitmapCaching(from.EnableBitmapCaching);
  performance.setDoShowDesktopBackground(from.EnableWallpaper);
  performance.setDoUseAnimation(from.EnableAnimation);
  performance.setDoShowWindowContent(from.EnableFullWindowDrag);
  performance.setDoUseThemes(from.EnableThemes);
  performance.setDoUseFontSmoothing(from.EnableFontSmoothing);
  performance.setDoUseDesktopComposition(from.EnableDesktopComposition);
  performance.setDoUseGA(from.EnableGraphicsAcceleration);
  performance.setDoFlashMMR(from.EnableFlashRedirection);
  performance.setDoUseSurge(from.EnableWANAcceleration);
}

std::shared_ptr<OvLocation> locationFrom(const OvCommon::OvLocationSettings& from) {
  auto location = OvLocation::location();
  location->setName(OvFarm::nsStringFromWstring(from.Name));
  location->setDoUseNatSupport(from.EnableNAT);
  location->setDoUseSsl(from.RDPonSSL);
  location->setPort(from.TCPPort);
  location->setProxyServer(OvFarm::nsStringFromWstring(from.ProxyServer));
  location->setSslGateway(OvFarm::nsStringFromWstring(from.SSLGateway));
  if (from.Protocol == 0 || from.Protocol == 1) location->setProtocol(from.Protocol);
  location->setExclusiveServers(joined(from.ProxyBypassList, ";"));
  location->setBrokers(asList(from.ServerList));
  return location;
}

}  // namespace

std::string OvFarm::nsStringFromWstring(const std::wstring& text) {
  return std::ranges::all_of(text, isCodePoint) ? pugi::as_utf8(text) : "";
}

std::shared_ptr<OvFarm> OvFarm::farmFromUrl(const std::string& url) {
  if (!orvane::isWebAddress(url)) return nullptr;
  constexpr std::string_view kSuffix = ".farm";
  const orvane::TemporaryFile file(folderOfPrivateFiles() + "/tempFarms-XXXXXX" + std::string(kSuffix),
                                   int{kSuffix.size()});
  if (!file.isThere()) {
    OvWriteLog(2, "%s: cannot create %s", __func__, file.path().c_str());
    return nullptr;
  }
  ovutilsext_download_url(url.c_str(), file.path().c_str());
  const std::optional<std::string> data = orvane::readFile(file.path());
  return farmFromXmlConfigData(data ? &*data : nullptr);
}

std::shared_ptr<OvFarm> OvFarm::farmFromXmlConfigData(const std::string* data) {
  if (data == nullptr) return nullptr;
  std::deque<OvCommon::OvFarmSettings> farms;
  OvCommon::ParseConfigurationFile(*data, farms);
  if (farms.empty()) {
    OvWriteLog(4, "%s: URL is invalid.", __func__);
    return nullptr;
  }
  if (farms.size() > 1) OvWriteLog(4, "%s: More then one farm present in config file.", __func__);

  const OvCommon::OvFarmSettings& from = farms.front();
  auto farm = std::make_shared<OvFarm>();
  farm->setName(nsStringFromWstring(from.FarmName));
  farm->setFarmDBGUID(nsStringFromWstring(from.FarmDBGUID));
  farm->setConfigName(nsStringFromWstring(from.ConfigName));
  farm->setConfigDBGUID(nsStringFromWstring(from.ConfigDBGUID));
  farm->setConfigTimestamp(nsStringFromWstring(from.ConfigTimestamp));
  farm->setDoReconnect(from.UserExperience.AutoReconnect);
  farm->setDisallowSaveCredentials(from.DisallowSaveCredentials);
  farm->setAnonymousLogin(from.AnonymousLogin);
  farm->credentials().setPreferredDomain(nsStringFromWstring(from.UserDomain));
  farm->credentials().setDisableUserDomain(from.DisableUserDomain);
  takeDisplay(from.DisplaySettings, farm->display());
  takeResources(from.LocalResources, farm->resourses());
  takePerformance(from.UserExperience, farm->performance());
  farm->setDefaultLocationIndex(std::max(from.DefaultLocation, 0) - 1);
  farm->setAutoLaunchApps(asList(from.AutoLaunchApps));
  farm->setServerCreated(true);
  for (const OvCommon::OvLocationSettings& location : from.Locations) farm->addLocation(locationFrom(location));
  return farm;
}

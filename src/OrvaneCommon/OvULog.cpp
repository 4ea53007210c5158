#include "OrvaneCommon/OvULog.h"

#include "OrvaneCommon/LocalizedText.h"
#include "OrvaneCommon/OrvaneSettings.h"
#include "OrvaneCommon/OvUSystem.h"
#include "OrvaneCommon/OvUVersions.h"
#include "OrvaneCommon/UserLanguages.h"
#include "Platform/UserFolders.h"
#include "Support/OvWriteLog.h"

namespace {

constexpr int kOff = 0;
constexpr int kFlow = 4;
constexpr int kBanner = 6;

void setLogging(int level) {
  OvSetLogLevel(level);
  if (level == kOff) OvDeleteLog();
}

}  // namespace

std::string OvU_GetLogFilePathFor(const std::string& module) { return orvane::stateFolder() + "/" + module + ".log"; }

void OvU_InitLogForModule(const std::string& module) {
  OvSetLogFile(OvU_GetLogFilePathFor(module).c_str());
  setLogging(OrvaneSettings::instance().neededToLog() ? kBanner : kOff);
  OvU_LogProductInformation();
}

void OvU_LogProductInformation() {
  const std::string language = orvane::preferredLanguages().front();
  const std::string locale = orvane::currentLocale();
  OvWriteLog(kBanner, "%s: Current OS X version: %s", __func__, orvane::operatingSystemDescription().c_str());
  OvWriteLog(kBanner, "%s: Connector version: %s", __func__, OvU_GetConnectorVesrion().c_str());
  OvWriteLog(kBanner, "%s: Device: %s %s", __func__, OvU_GetSystemInfo("hw.model").c_str(),
             OvU_GetSystemInfo("hw.machine").c_str());
  OvWriteLog(kBanner,
             "%s: Language: this app is running in \"%s\"\nLanguage: user's preferred language is \"%s\"(%s)\n"
             "Language: user's preferred language NSLocaleLanguageCode = \"%s\"",
             __func__, orvane::preferredLocalisations().front().c_str(), language.c_str(),
             orvane::canonicalLanguage(language).c_str(), orvane::languageCode(locale).c_str());
  OvWriteLog(kBanner, "%s: Current locale: %s", __func__, locale.c_str());
  OvWriteLog(kBanner, "%s: %s", __func__, std::string(64, '=').c_str());
}

namespace orvane {

void switchLogging(bool on) { setLogging(on ? kFlow : kOff); }

}  // namespace orvane

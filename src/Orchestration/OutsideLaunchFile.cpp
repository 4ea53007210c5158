#include "Orchestration/OutsideLaunchFile.h"

#include <algorithm>

#include <unistd.h>

#include "Http/Downloads.h"
#include "Orchestration/BrokerControllerError.h"
#include "Orchestration/FlowTexts.h"
#include "OrvaneCommon/WebAddress.h"
#include "Platform/TemporaryFile.h"
#include "Support/OvWriteLog.h"

namespace orvane {
namespace {

constexpr const char* kFunction = "launchAppWithOvlFile";

// Anything at all reads as a launch file, the page with which a server says no included.
bool leadsSomewhere(const OvSettings& settings) {
  const char* const targets[] = {settings.getServerName(), settings.getServerAddr(), settings.getComputer(),
                                 settings.getBrokerServers(), settings.getProgramFullPath()};
  return std::ranges::any_of(targets, [](const char* target) { return target != nullptr && *target != '\0'; });
}

OvError failure(const char* reason, const char* textKey) {
  OvWriteLog(2, "%s: %s", kFunction, reason);
  return OvU_MakeNSError(static_cast<int>(BrokerControllerError::kLaunchFileUnreadable), localizedText(textKey));
}

}  // namespace

std::optional<OvError> loadOutsideLaunchFile(const std::string& path, OvSettings& settings) {
  if (settings.loadOvlFile(path.c_str())) return std::nullopt;
  const std::string url = settings.getURL() == nullptr ? "" : settings.getURL();
  if (url.empty()) {
    OvWriteLog(2, "%s: Failed to load settings from ovl-file", kFunction);
    return getErrorForBrokerControllerErrorCode(BrokerControllerError::kLaunchFileUnreadable);
  }
  TemporaryFile fetched(path + ".XXXXXX");  // beside it
  if (!isWebAddress(url) || !fetched.isThere() || !ovutilsext_download_url(url.c_str(), fetched.path().c_str())) {
    return failure("Failed to load ovl file from URL", kLaunchFileNotFetched);
  }
  if (!settings.loadOvlFile(fetched.path().c_str()) || !leadsSomewhere(settings)) {
    return failure("Failed to load settings from ovl-file dowloaded from URL", kFetchedLaunchFileUnreadable);
  }
  // A document that has its file removed is gone by now, and would be at its place.
  if (!fetched.moveTo(path)) unlink(path.c_str());
  return std::nullopt;
}

}  // namespace orvane

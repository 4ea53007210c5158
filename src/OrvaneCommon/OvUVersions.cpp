#include "OrvaneCommon/OvUVersions.h"

#include <algorithm>

std::string OvU_GetConnectorVesrion() { return orvane::connectorVersion(ORVANE_VERSION, ORVANE_BUILD_NUMBER); }

std::string OvU_GetVersionAndBuildEnglishString() {
  return std::string("Version ") + ORVANE_VERSION + " build " + ORVANE_BUILD_NUMBER;
}

namespace orvane {

std::string releaseVersion() { return ORVANE_VERSION; }

std::string buildNumber() { return ORVANE_BUILD_NUMBER; }

std::string connectorVersion(std::string_view release, std::string_view build) {
  std::string version(release);
  if (std::ranges::count(release, '.') == 1) version += ".0";
  return version.append(".").append(build);
}

}  // namespace orvane

#pragma once

#include <string>
#include <string_view>

/// The connector's version, as the broker and the user see it: the release and the build number, always with four parts
/// for a release of two or three. Any thread.
std::string OvU_GetConnectorVesrion();

/// "Version 8.6 build 123", in English whatever the user's language. Any thread.
std::string OvU_GetVersionAndBuildEnglishString();

namespace orvane {

/// The release and the build number of this program.
std::string releaseVersion();
std::string buildNumber();

/// `release` with ".0" behind it if it has exactly two parts, then "." and `build`: "8.6.0.123" for "8.6" and "123".
std::string connectorVersion(std::string_view release, std::string_view build);

}  // namespace orvane

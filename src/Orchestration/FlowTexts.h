#pragma once

#include "OrvaneCommon/LocalizedText.h"

/// @file
/// Keys of the texts of the flows that no error code stands for.

namespace orvane {

inline constexpr const char* kConfigurationUpdatedTitle =
    localizedTextKey("OvBrokerClientController.GetConnectorInfo.Info.Title");
inline constexpr const char* kConfigurationUpdated =
    localizedTextKey("OvBrokerClientController.FarmConfigSuccessfullyUpdated");
inline constexpr const char* kLaunchFileNotFetched = localizedTextKey("OvBrokerClientController.Error.LoadOvlFromUrl");
inline constexpr const char* kFetchedLaunchFileUnreadable =
    localizedTextKey("OvBrokerClientController.Error.LoadSettingsFromOvlromUrl");
inline constexpr const char* kLaunchFileNotWritten = localizedTextKey("OvBrokerClientController.Error.SaveOvl");

}  // namespace orvane

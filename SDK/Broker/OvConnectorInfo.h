#pragma once

#include "Support/Property.h"

/// What a connector tells the broker of itself: its kind, the device it runs on, and the configuration it holds.
class OvConnectorInfo {
  ORVANE_STRING_PROPERTY(LaunchType, launchType)
  ORVANE_STRING_PROPERTY(ConnectorOSType, connectorOSType)
  ORVANE_STRING_PROPERTY(ConnectorVersion, connectorVersion)
  ORVANE_STRING_PROPERTY(DeviceName, deviceName)
  ORVANE_STRING_PROPERTY(DeviceIP, deviceIP)
  ORVANE_STRING_PROPERTY(DeviceTimeZoneOffset, deviceTimeZoneOffset)  ///< minutes east of UTC, as decimal text
  ORVANE_STRING_PROPERTY(ConfigGUID, configGUID)
  ORVANE_STRING_PROPERTY(ConfigTimestamp, configTimestamp)
  ORVANE_STRING_PROPERTY(BrowserType, browserType)
};

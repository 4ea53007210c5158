#pragma once

#include "Support/Property.h"

/// Values of OvConnectorInfoResult::getConfigStatus. 0 means that the broker said nothing.
enum ConfigStatus : int {
  CONFIG_STATUS_OK = 1,         ///< the connector's configuration is current
  CONFIG_STATUS_REQUIRED = 2,   ///< a new configuration is to be fetched
  CONFIG_STATUS_NOT_FOUND = 3,  ///< no configuration is assigned to this connector
};

/// Values of OvConnectorInfoResult::getConnectorStatus.
enum ConnectorStatus : int {
  CONNECTOR_STATUS_OK = 1,
  CONNECTOR_STATUS_UPDATE_AVAILABLE = 2,  ///< at getConnectorInstallFullPath, of version getConnectorMinVersion
};

/// The broker's answer to an OvConnectorInfo. A "full path" is a URL that can be fetched as it stands; the path beside
/// it is what the broker sent, absolute or relative to the broker.
class OvConnectorInfoResult {
  ORVANE_VALUE_PROPERTY(int, ConfigStatus, configStatus, 0)  ///< a ConfigStatus, or any other number
  ORVANE_STRING_PROPERTY(ConfigPath, configPath)
  ORVANE_STRING_PROPERTY(ConfigFullPath, configFullPath)
  ORVANE_STRING_PROPERTY(ConfigGUID, configGUID)
  ORVANE_STRING_PROPERTY(ConfigTimestamp, configTimestamp)
  ORVANE_VALUE_PROPERTY(int, ConnectorStatus, connectorStatus, 0)    ///< a ConnectorStatus, or any other number
  ORVANE_VALUE_PROPERTY(int, ConnectorOptions, connectorOptions, 0)  ///< 1: the update is required, not offered
  ORVANE_STRING_PROPERTY(ConnectorMinVersion, connectorMinVersion)
  ORVANE_STRING_PROPERTY(ConnectorInstallPath, connectorInstallPath)
  ORVANE_STRING_PROPERTY(ConnectorInstallFullPath, connectorInstallFullPath)
};

#pragma once

#include "Support/Property.h"

/// One of the user's sessions as the broker sees it. Texts are UTF-8; the meanings of the numbers are the broker's.
class OvServerSession {
  ORVANE_STRING_PROPERTY(DomainName, domainName)
  ORVANE_STRING_PROPERTY(UserName, userName)
  ORVANE_STRING_PROPERTY(ClientName, clientName)
  ORVANE_STRING_PROPERTY(ServerName, serverName)
  ORVANE_STRING_PROPERTY(ComputerId, computerId)
  ORVANE_VALUE_PROPERTY(int, ComputerType, computerType, 0)
  ORVANE_VALUE_PROPERTY(int, ProductUsage, productUsage, 0)
  ORVANE_VALUE_PROPERTY(int, Usage, usage, 0)
  ORVANE_VALUE_PROPERTY(int, SessionId, sessionId, 0)
  ORVANE_VALUE_PROPERTY(int, SessionState, sessionState, 0)
  ORVANE_STRING_PROPERTY(ConnectorType, connectorType)
  ORVANE_STRING_PROPERTY(ConnectorVersion, connectorVersion)
  ORVANE_STRING_PROPERTY(DeviceType, deviceType)
  ORVANE_STRING_PROPERTY(ClientIPAddress, clientIPAddress)
  ORVANE_STRING_PROPERTY(OperatingSystem, operatingSystem)
  ORVANE_STRING_PROPERTY(ServicePack, servicePack)
  ORVANE_STRING_PROPERTY(WebsiteName, websiteName)
  ORVANE_STRING_PROPERTY(InitialApplication, initialApplication)
  ORVANE_VALUE_PROPERTY(int, ConnectionStatus, connectionStatus, 0)
  ORVANE_VALUE_PROPERTY(int, ConnectorLatency, connectorLatency, 0)
  ORVANE_VALUE_PROPERTY(int, ConnectorBandwidth, connectorBandwidth, 0)
};

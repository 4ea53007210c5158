#pragma once

#include "Support/Property.h"

/// What an OvUrlScheme calls once it has understood a link, and the description of this client that a web page may ask
/// for. Lives for one link; one thread at a time.
///
/// The operations get zero-terminated bytes as the link carries them, unchecked, good for the time of the call and
/// never null. What they throw goes to the caller of OvUrlScheme::parseURL.
class OvUrlSchemeHandler {
  ORVANE_STRING_PROPERTY(BrowserType, browserType)
  ORVANE_STRING_PROPERTY(LaunchType, launchType)
  ORVANE_STRING_PROPERTY(ConnectorOSType, connectorOSType)
  ORVANE_STRING_PROPERTY(ConnectorVersion, connectorVersion)
  ORVANE_STRING_PROPERTY(DeviceName, deviceName)
  ORVANE_STRING_PROPERTY(DeviceIP, deviceIP)
  ORVANE_STRING_PROPERTY(DeviceTimeZoneOffset, deviceTimeZoneOffset)  ///< minutes east of UTC, as decimal text
  ORVANE_STRING_PROPERTY(ConfigGuid, configGuid)
  ORVANE_STRING_PROPERTY(ConfigTimestamp, configTimestamp)

 public:
  OvUrlSchemeHandler() = default;
  virtual ~OvUrlSchemeHandler() = default;

  /// Reports the description above to `url`, as a POST of a <connectorinfo> document. The answer is ignored, and so is
  /// `farmGuid`. Blocks as an HttpClient does.
  /// @throws OvException code 500: the text of the failed exchange (the server must answer 200), or "unhandled
  ///         exception" for what is no matter of HTTP.
  virtual void autoDetect(const char* url, const char* farmGuid);

  /// Does nothing. `url` is where a server farm configuration is, and `connect` whether to connect once it is loaded.
  virtual void loadConfig(const char* url, const char* farmGuid, bool connect);
  /// Does nothing.
  virtual void connectFarm(const char* farmGuid);
  /// Does nothing. `url` is where a launch file is.
  virtual void launchApp(const char* url);
};

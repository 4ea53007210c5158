#pragma once

#include <list>
#include <memory>
#include <string>

#include "Broker/OvApplication.h"
#include "Broker/OvConnectorInfo.h"
#include "Broker/OvConnectorInfoResult.h"
#include "Broker/OvServerSession.h"
#include "Files/OvSettings.h"
#include "Support/OvException.h"
#include "Support/Property.h"

class HttpClient;
class SimpleXML;

namespace orvane {
class RequestDocument;
class ResponseFields;
}  // namespace orvane

// The rows of the class's field table, in three kinds besides the plain ones of Property.h. `passed` is the type as it
// goes in and out. They are this header's own and vanish at its end.

// Who or where: a change ends the log-in.
#define ORVANE_IDENTITY_PROPERTY(type, passed, Name, name, initial) \
 public:                                                            \
  passed get##Name() const { return name##_; }                      \
  void set##Name(passed value) {                                    \
    name##_ = value;                                                \
    clearActiveState();                                             \
  }                                                                 \
                                                                    \
 private:                                                           \
  type name##_ = initial;

// What the broker may fix at log-in: then the setter throws code 5 and stores nothing.
#define ORVANE_FIXABLE_PROPERTY(type, Name, name, initial) \
 public:                                                   \
  type get##Name() const { return name##_; }               \
  void set##Name(type value) {                             \
    refuseIfFixed(name##Policy_);                          \
    name##_ = value;                                       \
  }                                                        \
  bool get##Name##Policy() const { return name##Policy_; } \
                                                           \
 private:                                                  \
  type name##_ = initial;                                  \
  bool name##Policy_ = false;

#define ORVANE_READ_ONLY_PROPERTY(type, passed, Name, name, initial) \
 public:                                                             \
  passed get##Name() const { return name##_; }                       \
                                                                     \
 private:                                                            \
  type name##_ = initial;

/// One conversation with a connection broker: where the broker is, who the user is, what the connector wants for its
/// sessions, and what the broker answered at log-in. Speaks XML over HTTP(S), one request for each message.
///
/// A client is unknown at first; getBrokerInfo makes the broker and its capabilities known, authenticate logs in. All
/// further exchanges log in by themselves if need be, and again when the broker no longer knows the session (1244).
///
/// One thread at a time for each object; several objects share nothing. All text is UTF-8 here, whatever the wire
/// takes. Every exchange blocks on the network: at most 10 s for each connect, without limit for a transfer; servers
/// are asked one after the other. All operations throw OvException by value: 1311 when no server of the list answers,
/// 13 when an answer isn't one, otherwise the broker's own code and text.
class OvBrokerClient {
 public:
  /// A session-bound exchange that is not settled after this many passes (log-in and request) ends: with 1244 and the
  /// broker's text if the last answer was that the user isn't logged in, with 1311 if the last request had no answer.
  static constexpr int kMaximumPasses = 64;

  OvBrokerClient();
  /// A client that sends all it sends through `httpClient`, which mustn't be null.
  explicit OvBrokerClient(std::unique_ptr<HttpClient> httpClient);
  ~OvBrokerClient();
  OvBrokerClient(const OvBrokerClient&) = delete;
  OvBrokerClient& operator=(const OvBrokerClient&) = delete;

  // Where the broker is.
  ORVANE_VALUE_PROPERTY(bool, Randomize, randomize, true)  ///< pick servers of the list at random
  /// Comma-separated entries, each a host name or address, optionally followed by a path (`host/path`).
  ORVANE_IDENTITY_PROPERTY(std::string, const std::string&, Server, server, {})
  ORVANE_IDENTITY_PROPERTY(int, int, TcpPort, tcpPort, 80)  ///< for all servers of the list
  ORVANE_IDENTITY_PROPERTY(bool, bool, UseSSL, useSSL, false)
  ORVANE_READ_ONLY_PROPERTY(std::string, const std::string&, FarmName, farmName, {})  ///< set by getFarmProperties

  // Who asks.
  ORVANE_VALUE_PROPERTY(int, ClientBitsPerPixel, clientBitsPerPixel, 32)
  ORVANE_IDENTITY_PROPERTY(std::string, const std::string&, ClientIPAddress, clientIPAddress, {})
  ORVANE_IDENTITY_PROPERTY(std::string, const std::string&, ClientName, clientName, {})
  ORVANE_VALUE_PROPERTY(bool, UseAlternateIPAddress, useAlternateIPAddress, false)

  // Passed on to the launch record; the broker's own traffic uses none of it.
  ORVANE_STRING_PROPERTY(SslGateway, sslGateway)
  ORVANE_VALUE_PROPERTY(bool, UseProxy, useProxy, false)
  ORVANE_STRING_PROPERTY(ProxyServer, proxyServer)
  ORVANE_STRING_PROPERTY(ProxyBypass, proxyBypass)

  ORVANE_IDENTITY_PROPERTY(std::string, const std::string&, Domain, domain, {})
  ORVANE_IDENTITY_PROPERTY(std::string, const std::string&, Username, username, {})

  // What the connector wants for its sessions.
  ORVANE_VALUE_PROPERTY(bool, EnableSSO, enableSSO, false)
  ORVANE_VALUE_PROPERTY(bool, EnableKerberos, enableKerberos, false)
  ORVANE_VALUE_PROPERTY(bool, FullScreen, fullScreen, true)
  ORVANE_VALUE_PROPERTY(int, DesktopWidth, desktopWidth, 0)    ///< pixels
  ORVANE_VALUE_PROPERTY(int, DesktopHeight, desktopHeight, 0)  ///< pixels
  ORVANE_VALUE_PROPERTY(int, SessionBitsPerPixel, sessionBitsPerPixel, 32)
  ORVANE_VALUE_PROPERTY(int, SeamlessMode, seamlessMode, 0)
  ORVANE_VALUE_PROPERTY(bool, SmartSizing, smartSizing, false)
  ORVANE_VALUE_PROPERTY(bool, DisplayConnectionBar, displayConnectionBar, false)
  ORVANE_VALUE_PROPERTY(bool, PinConnectionBar, pinConnectionBar, false)
  ORVANE_VALUE_PROPERTY(bool, SpanMonitors, spanMonitors, false)
  ORVANE_FIXABLE_PROPERTY(int, AudioRedirectionMode, audioRedirectionMode, 0)  ///< 0, 1 or 2 if the broker fixes it
  ORVANE_VALUE_PROPERTY(int, KeyboardHookMode, keyboardHookMode, 0)
  ORVANE_FIXABLE_PROPERTY(bool, RedirectClipboard, redirectClipboard, false)
  ORVANE_FIXABLE_PROPERTY(bool, RedirectComPorts, redirectComPorts, false)
  ORVANE_FIXABLE_PROPERTY(bool, RedirectDrives, redirectDrives, false)
  ORVANE_FIXABLE_PROPERTY(bool, RedirectMicrophone, redirectMicrophone, false)
  ORVANE_FIXABLE_PROPERTY(bool, RedirectPrinters, redirectPrinters, false)
  ORVANE_FIXABLE_PROPERTY(bool, RedirectSmartCards, redirectSmartCards, false)
  ORVANE_FIXABLE_PROPERTY(bool, RedirectUniversalPrinters, redirectUniversalPrinters, false)
  ORVANE_FIXABLE_PROPERTY(bool, RedirectUSB, redirectUSB, false)
  ORVANE_VALUE_PROPERTY(int, ConnectionType, connectionType, 0)
  ORVANE_VALUE_PROPERTY(bool, EnableWallpaper, enableWallpaper, false)
  ORVANE_VALUE_PROPERTY(bool, EnableFullWindowDrag, enableFullWindowDrag, false)
  ORVANE_VALUE_PROPERTY(bool, EnableAnimation, enableAnimation, false)
  ORVANE_VALUE_PROPERTY(bool, EnableThemes, enableThemes, false)
  ORVANE_VALUE_PROPERTY(bool, EnableBitmapCaching, enableBitmapCaching, false)
  ORVANE_VALUE_PROPERTY(bool, EnableDesktopComposition, enableDesktopComposition, false)
  ORVANE_VALUE_PROPERTY(bool, EnableFontSmoothing, enableFontSmoothing, false)
  ORVANE_VALUE_PROPERTY(bool, EnableAutoReconnection, enableAutoReconnection, false)
  ORVANE_FIXABLE_PROPERTY(bool, EnableBitmapAcceleration, enableBitmapAcceleration, false)
  ORVANE_FIXABLE_PROPERTY(bool, EnableLocalTextEcho, enableLocalTextEcho, false)
  ORVANE_FIXABLE_PROPERTY(bool, EnableMultimediaRedirection, enableMultimediaRedirection, false)
  ORVANE_FIXABLE_PROPERTY(bool, EnableFlashRedirection, enableFlashRedirection, false)
  ORVANE_FIXABLE_PROPERTY(bool, EnableNetworkOptimization, enableNetworkOptimization, false)

  // What the connector says of itself.
  ORVANE_STRING_PROPERTY(ConnectorType, connectorType)
  ORVANE_STRING_PROPERTY(WebSiteName, webSiteName)
  ORVANE_TEXT_PROPERTY(LaunchType, launchType, "Native")
  ORVANE_STRING_PROPERTY(ConnectorOSType, connectorOSType)
  /// Minutes east of UTC at construction.
  ORVANE_READ_ONLY_PROPERTY(int, int, DeviceTimeZoneOffset, deviceTimeZoneOffset, 0)
  ORVANE_TEXT_PROPERTY(ConnectorVersion, connectorVersion, "1.0.0")
  /// The language of built-in messages, as i18n_get_locale_string takes it.
  ORVANE_TEXT_PROPERTY(ConnectorLocale, connectorLocale, "en-us")

  // What the broker said it can do.
  ORVANE_READ_ONLY_PROPERTY(bool, bool, GetConnectorInfoSupported, getConnectorInfoSupported, false)
  ORVANE_READ_ONLY_PROPERTY(bool, bool, GetConnectorInfoAuthenticationRequired, getConnectorInfoAuthenticationRequired,
                            true)

 public:
  /// The password, in the clear in memory and enciphered on the wire. A change ends the log-in; what was is wiped.
  const std::string& getPassword() const { return password_; }
  void setPassword(const std::string& value);

  /// The drives to redirect; fixed together with RedirectDrives.
  const std::string& getDrivesToRedirect() const { return drivesToRedirect_; }
  void setDrivesToRedirect(const std::string& value);

  /// Takes server, port and protocol from a URL. A path becomes part of the server entry, up to "/autodetect" if that
  /// stands in it. Ends the log-in. Code 13 and no change if the URL can't be used.
  void setURL(const std::string& url);

  /// The broker URLs worth trying, in order, for an address as a user types it: a host, with or without port or path,
  /// or a URL. No network traffic.
  ///
  /// An address that starts with "http" is a URL and gives one candidate (port 443 for https; for http 80 with a path
  /// and 8080 without); any other gives https (443) first, then http. White space around it and ":" and "/" at its end
  /// fall away, and so does a query.
  /// @throws OvException code 0 with the URL parser's text, or with the built-in one for an unsupported protocol.
  std::list<std::string> normalizeBrokerEndpointUrl(const std::string& url) const;

  /// Sets the process's log file; see OvSetLogFile.
  void setLogFile(const std::string& path);

  /// Forgets the log-in, the broker that answered and what it can do.
  void clearActiveState();

  /// The entries of the server list, in order; empty ones vanish, white space stays.
  std::list<std::string> buildServerList() const;

  /// The URL of `path` at the broker that answered last; a `path` that is a URL itself comes back as it is.
  std::string constructFullPath(const std::string& path) const;

  /// One HTTP exchange with one server entry: POST of `body`, or GET if it is null, at the entry's own path or at
  /// `path` below it if that isn't null. False, with a line in the log and `response` as it was, if none of status 200
  /// came. `server` mustn't be null.
  bool sendRequest(const char* server, const char* path, const char* body, std::string& response);
  bool sendRequest(const char* server, const char* body, std::string& response);

  /// Text of a response as UTF-8; null gives an empty text.
  std::string decodeXMLString(const char* text) const;

  /// Asks the servers for their capabilities, without a log-in; call it first, so that the capabilities hold for the
  /// log-in. The server that answers becomes the active one.
  void getBrokerInfo();

  /// Logs in, unless the client is logged in already. What the broker fixes for the session is in effect afterwards,
  /// also after a refusal.
  void authenticate();

  /// Exchanges a ticket that was issued elsewhere for the user's domain, name and password, which are then set here, or
  /// with `validateOnly` only has it checked. Asks the server that the ticket names, once. The ticket's protocol and
  /// port stay set here, whatever comes of it; the server list and a log-in stay as they were. Credentials that come
  /// with an error are set before it is thrown.
  /// @throws OvException 87 for a ticket of the wrong form; 1311 if its server doesn't answer; 13 for a malformed
  /// answer; 6000 if memory is short.
  void authenticateTicket(const std::string& ticket, bool validateOnly);

  /// Fetches the applications published to the user, in the broker's order, duplicates included. An empty list is a
  /// valid answer.
  std::list<std::shared_ptr<OvApplication>> getApplicationList();

  /// Asks where and how to start an application, by OvApplication::getName, and gives the launch record made of the
  /// answer and of this client's settings. Starts nothing.
  std::unique_ptr<OvSettings> launchApplication(const std::string& appName);

  /// Tells the broker what this connector is, and learns whether its configuration and version are up to date. Logs in
  /// only if the broker wants that.
  std::unique_ptr<OvConnectorInfoResult> getConnectorInfo(const OvConnectorInfo& info);

  /// Fetches the farm's name for getFarmName, which stays as it was if the broker sends none.
  void getFarmProperties();

  /// Fetches the user's sessions as the broker sees them, in its order.
  std::list<std::shared_ptr<OvServerSession>> getSessionList();

  /// An icon string (OvApplication::getLargeIcon) as an ICO or PNG image in a new buffer that the caller frees with
  /// free(). Any thread.
  /// @throws OvException -1073282990, "The buffer cannot be created."
  static void saveIconToICOBuffer(const std::string& icon, unsigned char** buffer, unsigned int* size);
  static void saveIconToPNGBuffer(const std::string& icon, unsigned char** buffer, unsigned int* size);

  /// An icon string as a PNG file; both write PNG. Any thread.
  /// @throws OvException -1073282990, "The directory or file cannot be created."
  static void saveIconToICOFile(const std::string& icon, const std::string& path);
  static void saveIconToPNGFile(const std::string& icon, const std::string& path);

 private:
  struct SessionExchange;

  // Throws `text`, or a built-in message in the connector's language if it is null.
  [[noreturn]] void win32Error(int code, const char* text) const;
  void refuseIfFixed(bool policy) const;

  // Asks the servers of the list one after the other until one, `answering`, gives a response that isn't empty.
  std::string walkServers(const char* path, const char* body, std::string& answering);
  // What the root element of a response holds; code 13 if there is none.
  orvane::ResponseFields answerIn(std::string response, const std::string& root) const;
  // Runs a message that carries the cookie until it is settled.
  void run(const SessionExchange& exchange);
  void applyCapabilities(const orvane::ResponseFields& response);
  void applyPolicies(const orvane::ResponseFields& response);

  void applySessionSettings(OvSettings& record) const;

  struct SwitchPolicy;
  struct SessionSetting;
  static const SwitchPolicy kSwitchPolicies[];

  std::string password_;
  std::string drivesToRedirect_ = "*";
  std::string cookie_;        // not empty: logged in
  std::string activeServer_;  // the entry that answered; all messages of a log-in go there
  bool useUtf8OnWire_ = false;
  std::unique_ptr<HttpClient> httpClient_;
};

#undef ORVANE_IDENTITY_PROPERTY
#undef ORVANE_FIXABLE_PROPERTY
#undef ORVANE_READ_ONLY_PROPERTY

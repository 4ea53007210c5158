// From an address as a user types it to the URLs worth trying.

#include <strings.h>

#include "Broker/OvBrokerClient.h"
#include "Support/BuiltInMessages.h"
#include "Support/OvUrlParser.h"
#include "Support/TrimWhitespaces.h"

namespace {

bool startsWithHttp(const std::string& text) { return strncasecmp(text.c_str(), "http", 4) == 0; }

std::string endpoint(const std::string& scheme, const OvUrlParser& parsed, int port) {
  return scheme + "://" + parsed.host() + ":" + std::to_string(port) + parsed.path();
}

}  // namespace

std::list<std::string> OvBrokerClient::normalizeBrokerEndpointUrl(const std::string& url) const {
  // Trimmed before its scheme is looked for, so that a pasted blank doesn't hide one.
  std::string address = trim_whitespaces(url);
  const bool hasScheme = startsWithHttp(address);
  // "any" only lets the parser work.
  if (!hasScheme) address = trim_whitespaces("any://" + address);
  address.erase(address.find_last_not_of(":/") + 1);

  OvUrlParser parsed;
  parsed.parse(address);
  const bool portNamed = parsed.port() != -1;
  const int httpPort = portNamed ? parsed.port() : parsed.path().empty() ? 8080 : 80;
  const int httpsPort = portNamed ? parsed.port() : 443;

  if (!hasScheme) return {endpoint("https", parsed, httpsPort), endpoint("http", parsed, httpPort)};
  if (!startsWithHttp(parsed.scheme()))
    win32Error(0, i18n_get_locale_string(connectorLocale_.c_str(), kMessageUnsupportedProtocol));
  const bool isHttps = strcasecmp(parsed.scheme().c_str(), "https") == 0;
  return {endpoint(parsed.scheme(), parsed, isHttps ? httpsPort : httpPort)};
}

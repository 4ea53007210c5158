// The model's settings on a protocol client, and what this connector says of itself.

#include <ctime>
#include <fstream>
#include <iterator>

#include "Orchestration/BrokerControllerError.h"
#include "Orchestration/OvBrokerClientController.h"
#include "OrvaneCommon/OvUSystem.h"
#include "OrvaneCommon/OvUText.h"
#include "OrvaneCommon/OvUVersions.h"
#include "Support/HostLookup.h"

namespace {

constexpr int kHttps = 1;
constexpr size_t kNameCapacity = 256;

// What the user calls this machine, else its host name.
std::string localisedHostName() {
  std::ifstream file("/etc/machine-info", std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  const std::string name = orvane::osReleaseValue(text, "PRETTY_HOSTNAME");
  if (!name.empty()) return name;
  char hostName[kNameCapacity] = {};
  ovutils_get_hostname(hostName, sizeof hostName);
  return hostName;
}

long minutesEastOfGmt() {
  const time_t now = time(nullptr);
  tm local{};
  localtime_r(&now, &local);
  return local.tm_gmtoff / 60;
}

void setUser(OvBrokerClient& client, const OvCredentials& credentials) {
  const std::string& name = credentials.username();
  const size_t backslash = name.find('\\');
  if (backslash == std::string::npos) {
    client.setUsername(name);
    client.setDomain(credentials.domain());
  } else {
    const size_t start = backslash + 1;
    client.setUsername(name.substr(start, name.find('\\', start) - start));  // a third part means nothing
    client.setDomain(name.substr(0, backslash));
  }
  client.setPassword(credentials.password().text());
}

std::string joined(const std::vector<std::string>& brokers) {
  std::string list;
  for (const std::string& broker : brokers) list.append(list.empty() ? "" : ",").append(broker);
  return list;
}

}  // namespace

std::optional<OvError> OvBrokerClientController::configureBrokerClient(OvBrokerClient& client,
                                                                       const OvCredentials* credentials,
                                                                       bool anonymously, const OvLocation* location) {
  const OvConnectorInfo info = makeConnectorInfo();
  client.setConnectorType("Mac");
  client.setLaunchType(info.getLaunchType());
  client.setConnectorOSType(info.getConnectorOSType());
  client.setConnectorVersion(info.getConnectorVersion());
  client.setClientName(info.getDeviceName());
  client.setClientIPAddress(info.getDeviceIP());
  client.setConnectorLocale(OvU_GetPreferedWindowsLocale());

  if (anonymously) {
    client.setUsername("");
    client.setPassword("");
    client.setDomain("");
  } else if (credentials != nullptr && !credentials->isEmpty()) {
    setUser(client, *credentials);
  }

  if (location == nullptr) return std::nullopt;
  if (location->brokers().empty()) return getErrorForBrokerControllerErrorCode(BrokerControllerError::kNoBrokers);
  client.setServer(joined(location->brokers()));
  client.setTcpPort(location->port());
  client.setUseSSL(location->protocol() == kHttps);
  client.setUseProxy(!location->proxyServer().empty());
  if (client.getUseProxy()) {
    client.setProxyServer(location->proxyServer());
    client.setProxyBypass(location->exclusiveServers());
  }
  return std::nullopt;
}

void OvBrokerClientController::configureBrokerClientOfFarm(const OvFarm& farm, const OvCredentials* credentials,
                                                           bool anonymously, const OvLocation* location) {
  farm.brokerClientDispatchQueue()->post(
      [client = farm.brokerClient(), anonymously,
       credentials = credentials == nullptr ? nullptr : std::make_shared<const OvCredentials>(*credentials),
       location = location == nullptr ? nullptr : std::make_shared<const OvLocation>(*location)] {
        configureBrokerClient(*client, credentials.get(), anonymously, location.get());
      });
}

OvConnectorInfo OvBrokerClientController::makeConnectorInfo() {
  char address[kNameCapacity] = {};
  ovutils_get_ip_address(address, sizeof address);
  OvConnectorInfo info;
  info.setLaunchType("Native");
  info.setConnectorOSType("Mac");  // which brokers know, whatever this runs on; so too the connector's type
  info.setConnectorVersion(OvU_GetConnectorVesrion());
  info.setDeviceName(OvU_AddEscapeCharactersForXML(localisedHostName()));
  info.setDeviceIP(address);
  info.setDeviceTimeZoneOffset(std::to_string(minutesEastOfGmt()));
  return info;
}

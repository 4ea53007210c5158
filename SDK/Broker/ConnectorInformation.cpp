// What the broker learns of this connector, and says to it.

#include "Broker/Protocol.h"
#include "Broker/SessionExchange.h"

namespace protocol = orvane::protocol;

namespace {

constexpr orvane::NumberRow<OvConnectorInfoResult> kNumbers[] = {
    {"config-status", &OvConnectorInfoResult::setConfigStatus},
    {"connector-status", &OvConnectorInfoResult::setConnectorStatus},
    {"connector-options", &OvConnectorInfoResult::setConnectorOptions},
};

constexpr orvane::TextRow<OvConnectorInfoResult> kTexts[] = {
    {"config-path", &OvConnectorInfoResult::setConfigPath},
    {"config-guid", &OvConnectorInfoResult::setConfigGUID},
    {"config-timestamp", &OvConnectorInfoResult::setConfigTimestamp},
    {"connector-min-version", &OvConnectorInfoResult::setConnectorMinVersion},
    {"connector-install-location", &OvConnectorInfoResult::setConnectorInstallPath},
};

}  // namespace

std::unique_ptr<OvConnectorInfoResult> OvBrokerClient::getConnectorInfo(const OvConnectorInfo& info) {
  auto result = std::make_unique<OvConnectorInfoResult>();
  run({.message = "getconnectorinfo",
       .operation = "getConnectorInfo",
       .alwaysAuthenticated = false,
       .describe =
           [&](orvane::RequestDocument& request) {
             request.openSection("connectorinfo");
             request.add("launchtype", info.getLaunchType());
             request.add("connectorostype", info.getConnectorOSType());
             request.add("connectorversion", info.getConnectorVersion());
             request.add("clientversion", protocol::kClientVersion);
             request.add("connectortype", connectorType_);
             request.add("devicename", info.getDeviceName());
             request.add("deviceip", info.getDeviceIP());
             request.add("devicetimezoneoffset", info.getDeviceTimeZoneOffset());
             request.add("configguid", info.getConfigGUID());
             request.add("configtimestamp", info.getConfigTimestamp());
             request.add("browsertype", info.getBrowserType());
             request.add("locale", connectorLocale_);
           },
       .deliver =
           [&](const orvane::ResponseFields& response) {
             response.readTexts<OvConnectorInfoResult>(kTexts, *result);
             response.readNumbers<OvConnectorInfoResult>(kNumbers, *result);
           }});
  if (!result->getConfigPath().empty()) result->setConfigFullPath(constructFullPath(result->getConfigPath()));
  if (!result->getConnectorInstallPath().empty())
    result->setConnectorInstallFullPath(constructFullPath(result->getConnectorInstallPath()));
  return result;
}

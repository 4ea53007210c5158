// The farm's name and the user's sessions.

#include "Broker/SessionExchange.h"

namespace {

constexpr orvane::TextRow<OvServerSession> kTexts[] = {
    {"domain", &OvServerSession::setDomainName},
    {"uname", &OvServerSession::setUserName},
    {"client", &OvServerSession::setClientName},
    {"server", &OvServerSession::setServerName},
    {"compid", &OvServerSession::setComputerId},
    {"os", &OvServerSession::setOperatingSystem},
    {"sp", &OvServerSession::setServicePack},
    {"clientip", &OvServerSession::setClientIPAddress},
    {"connectortype", &OvServerSession::setConnectorType},
    {"connectorversion", &OvServerSession::setConnectorVersion},
    {"devicetype", &OvServerSession::setDeviceType},
    {"websitename", &OvServerSession::setWebsiteName},
    {"initialapp", &OvServerSession::setInitialApplication},
};

constexpr orvane::NumberRow<OvServerSession> kNumbers[] = {
    {"type", &OvServerSession::setComputerType},
    {"product", &OvServerSession::setProductUsage},
    {"usage", &OvServerSession::setUsage},
    {"sessionid", &OvServerSession::setSessionId},
    {"sessionstate", &OvServerSession::setSessionState},
    {"connectionstatus", &OvServerSession::setConnectionStatus},
    {"connectorlatency", &OvServerSession::setConnectorLatency},
    {"connectorbandwidth", &OvServerSession::setConnectorBandwidth},
};

void readSession(const orvane::ResponseFields& item, OvServerSession& session) {
  item.readTexts<OvServerSession>(kTexts, session);
  item.readNumbers<OvServerSession>(kNumbers, session);
}

}  // namespace

void OvBrokerClient::getFarmProperties() {
  run({.message = "getfarmproperties",
       .operation = "getFarmProperties",
       .deliver = [this](const orvane::ResponseFields& response) {
         if (auto name = response.text("farmname")) farmName_ = std::move(*name);
       }});
}

std::list<std::shared_ptr<OvServerSession>> OvBrokerClient::getSessionList() {
  std::list<std::shared_ptr<OvServerSession>> sessions;
  run({.message = "getsessionlist",
       .operation = "getSessionList",
       .deliver = [&](const orvane::ResponseFields& response) {
         sessions = response.list<OvServerSession>("session", readSession);
       }});
  return sessions;
}

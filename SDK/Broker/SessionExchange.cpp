#include "Broker/SessionExchange.h"

#include "Broker/Protocol.h"
#include "Support/OvWriteLog.h"

namespace protocol = orvane::protocol;

void OvBrokerClient::run(const SessionExchange& exchange) {
  const std::string requestName = std::string(exchange.message) + "-req";
  const std::string responseName = std::string(exchange.message) + "-rsp";
  int lastErrorCode = protocol::kErrorNoLogonServers;
  std::string lastErrorText;

  for (int pass = 0; pass < kMaximumPasses; ++pass) {
    if (exchange.alwaysAuthenticated || getConnectorInfoAuthenticationRequired_) authenticate();

    orvane::RequestDocument request(requestName.c_str(), useUtf8OnWire_);
    request.add("cookie", cookie_);
    exchange.describe(request);
    const std::string body = request.text();
    OvWriteLog(5, "%s::%s, request=%s", "OvBrokerClient", exchange.operation, body.c_str());

    std::string response;
    if (!sendRequest(activeServer_.c_str(), body.c_str(), response)) {
      clearActiveState();
      lastErrorCode = protocol::kErrorNoLogonServers;
      continue;
    }
    OvWriteLog(5, "%s::%s, response=%s", "OvBrokerClient", exchange.operation, response.c_str());

    const orvane::ResponseFields fields = answerIn(std::move(response), responseName);
    const orvane::ResponseFields::Error error = fields.error();
    if (error.code == 0) return exchange.deliver(fields);
    if (error.code != protocol::kErrorNotLoggedIn) win32Error(error.code, error.text.c_str());
    clearActiveState();
    lastErrorCode = error.code;
    lastErrorText = error.text;
  }
  win32Error(lastErrorCode, lastErrorCode == protocol::kErrorNotLoggedIn ? lastErrorText.c_str() : nullptr);
}

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

    const SimpleXML document(std::move(response));
    SimpleXML attributes;
    SimpleXML content;
    if (document.FindTag(responseName.c_str(), attributes, content) <= 0)
      win32Error(protocol::kErrorInvalidData, nullptr);

    const orvane::ResponseFields fields(content, useUtf8OnWire_);
    const int errorCode = fields.number("errorcode").value_or(0);
    const std::string errorText = fields.text("errortext").value_or("");
    if (errorCode == 0) return exchange.deliver(fields);
    if (errorCode != protocol::kErrorNotLoggedIn) win32Error(errorCode, errorText.c_str());
    clearActiveState();
    lastErrorCode = errorCode;
    lastErrorText = errorText;
  }
  win32Error(lastErrorCode, lastErrorCode == protocol::kErrorNotLoggedIn ? lastErrorText.c_str() : nullptr);
}

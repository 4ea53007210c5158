#include "Explanation.h"

#include "Broker/ServerEntry.h"
#include "Http/HttpClient.h"
#include "Http/HttpException.h"

namespace orvane::walkthrough {

std::string transportProblem(const OvBrokerClient& client) {
  const ServerEntry entry(client.getServer());
  HttpClient http;
  http.setHostName(entry.host());
  http.setTcpPort(client.getTcpPort());
  http.setUseSSL(client.getUseSSL());
  http.setObjectName(entry.objectName("/brokerinfo"));
  try {
    http.get();
    return {};
  } catch (const HttpException& exception) {
    return exception.getErrorText() + " (" + std::to_string(exception.getErrorCode()) + ")";
  }
}

std::string explained(const std::string& doing, const OvException& exception) {
  const std::string text = exception.getErrorText().empty() ? "The broker gave no reason." : exception.getErrorText();
  return doing + " failed: " + text + " (" + std::to_string(exception.getErrorCode()) + ")";
}

}  // namespace orvane::walkthrough

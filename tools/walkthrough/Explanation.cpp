#include "Explanation.h"

#include "Broker/ServerEntry.h"
#include "Http/HttpClient.h"
#include "Http/HttpException.h"
#include "PrintableText.h"

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
  const std::string reason = printable(exception.getErrorText());
  const std::string text = doing + " failed: " + (reason.empty() ? "The broker gave no reason." : reason);
  const int code = exception.getErrorCode();
  return code == 0 ? text : text + " (" + std::to_string(code) + ")";
}

}  // namespace orvane::walkthrough

#include "Broker/OvBrokerClient.h"

#include <algorithm>
#include <ctime>
#include <iterator>
#include <string_view>
#include <utility>

#include "Broker/Protocol.h"
#include "Broker/ResponseFields.h"
#include "Broker/ServerEntry.h"
#include "Http/HttpClient.h"
#include "Http/HttpException.h"
#include "Support/BuiltInMessages.h"
#include "Support/OvWriteLog.h"
#include "Support/RandomBytes.h"
#include "Support/SecureMemory.h"

namespace protocol = orvane::protocol;

namespace {

constexpr const char* kAutodetect = "/autodetect";

int minutesEastOfUtc() {
  const time_t now = time(nullptr);
  tm local{};
  localtime_r(&now, &local);
  return static_cast<int>(local.tm_gmtoff / 60);
}

std::string withCode(std::string text, int code) {
  constexpr std::string_view kPlaceholder = "%d";  // the Chinese texts have none
  const size_t position = text.find(kPlaceholder);
  return position == std::string::npos ? text : text.replace(position, kPlaceholder.size(), std::to_string(code));
}

}  // namespace

OvBrokerClient::OvBrokerClient() : OvBrokerClient(std::make_unique<HttpClient>()) {}

OvBrokerClient::OvBrokerClient(std::unique_ptr<HttpClient> httpClient) : httpClient_(std::move(httpClient)) {
  deviceTimeZoneOffset_ = minutesEastOfUtc();
}

OvBrokerClient::~OvBrokerClient() { orvane::wipe(password_); }

void OvBrokerClient::setPassword(const std::string& value) {
  if (&value != &password_) {  // it may be what getPassword gave
    orvane::wipe(password_);
    password_ = value;
  }
  clearActiveState();
}

void OvBrokerClient::setDrivesToRedirect(const std::string& value) {
  refuseIfFixed(redirectDrivesPolicy_);
  drivesToRedirect_ = value;
}

void OvBrokerClient::setURL(const std::string& url) {
  HttpClientBase parsed;
  try {
    parsed.setURL(url);
  } catch (const HttpException&) {
    win32Error(protocol::kErrorInvalidData, nullptr);
  }
  const std::string& path = parsed.getObjectName();
  server_ = parsed.getHostName() + path.substr(0, path.find(kAutodetect));
  tcpPort_ = parsed.getTcpPort();
  useSSL_ = parsed.getUseSSL();
  clearActiveState();
}

void OvBrokerClient::setLogFile(const std::string& path) { OvSetLogFile(path.c_str()); }

void OvBrokerClient::clearActiveState() {
  cookie_.clear();
  activeServer_.clear();
  getConnectorInfoSupported_ = false;
  getConnectorInfoAuthenticationRequired_ = true;
  useUtf8OnWire_ = false;
}

std::list<std::string> OvBrokerClient::buildServerList() const {
  std::list<std::string> servers;
  for (size_t begin = 0; begin <= server_.size();) {
    const size_t end = std::min(server_.find(',', begin), server_.size());
    if (end > begin) servers.push_back(server_.substr(begin, end - begin));
    begin = end + 1;
  }
  return servers;
}

std::string OvBrokerClient::constructFullPath(const std::string& path) const {
  return orvane::ServerEntry(activeServer_).urlOf(path, useSSL_, tcpPort_);
}

bool OvBrokerClient::sendRequest(const char* server, const char* body, std::string& response) {
  return sendRequest(server, nullptr, body, response);
}

bool OvBrokerClient::sendRequest(const char* server, const char* path, const char* body, std::string& response) {
  OvWriteLog(5, "%s::sendRequest, server=%s, path=%s, body=%s", "OvBrokerClient", server, path ? path : "",
             body ? body : "");
  const orvane::ServerEntry entry(server);
  httpClient_->setHostName(entry.host());
  httpClient_->setTcpPort(tcpPort_);
  httpClient_->setUseSSL(useSSL_);
  httpClient_->setObjectName(entry.objectName(path));
  httpClient_->setQueryString("");
  try {
    response = body ? httpClient_->post(body) : httpClient_->get();
    return true;
  } catch (const HttpException& exception) {
    OvWriteLog(2, "%s::sendRequest, error sending request (errorCode=%d, errorText=%s)", "OvBrokerClient",
               exception.getErrorCode(), exception.getErrorText().c_str());
    return false;
  }
}

std::string OvBrokerClient::decodeXMLString(const char* text) const {
  return orvane::decodedText(text, useUtf8OnWire_);
}

std::string OvBrokerClient::walkServers(const char* path, const char* body, std::string& answering) {
  std::list<std::string> servers = buildServerList();
  std::string response;
  while (!servers.empty()) {
    const size_t index = randomize_ ? orvane::randomIndex(servers.size()) : 0;
    answering = *std::next(servers.begin(), static_cast<std::ptrdiff_t>(index));
    servers.remove(answering);
    if (sendRequest(answering.c_str(), path, body, response) && !response.empty()) return response;
  }
  win32Error(protocol::kErrorNoLogonServers, nullptr);
}

orvane::ResponseFields OvBrokerClient::answerIn(std::string response, const std::string& root) const {
  const SimpleXML document(std::move(response));
  SimpleXML attributes;
  SimpleXML content;
  if (document.FindTag(root.c_str(), attributes, content) <= 0) win32Error(protocol::kErrorInvalidData, nullptr);
  return {std::move(content), useUtf8OnWire_};
}

void OvBrokerClient::getBrokerInfo() {
  std::string answering;
  std::string response = walkServers("/brokerinfo", nullptr, answering);
  applyCapabilities(answerIn(std::move(response), "brokerinfo"));
  activeServer_ = answering;
}

void OvBrokerClient::applyCapabilities(const orvane::ResponseFields& response) {
  const std::optional<int> capabilities = response.numberWithContent("capabilities");
  if (!capabilities) return;
  getConnectorInfoSupported_ = (*capabilities & 1) != 0;
  getConnectorInfoAuthenticationRequired_ = (*capabilities & 2) != 0;
  useUtf8OnWire_ = (*capabilities & 4) != 0;
}

void OvBrokerClient::win32Error(int code, const char* text) const {
  if (text) throw OvException(code, text);
  int message = kMessageErrorOccurred;
  if (code == protocol::kErrorAccessDenied) message = kMessageAccessDenied;
  if (code == protocol::kErrorInvalidData) message = kMessageInvalidData;
  if (code == protocol::kErrorNoLogonServers) message = kMessageNoLogonServers;
  throw OvException(code, withCode(i18n_get_locale_string(connectorLocale_.c_str(), message), code));
}

void OvBrokerClient::refuseIfFixed(bool policy) const {
  if (policy) win32Error(protocol::kErrorAccessDenied, nullptr);
}

#include "SDK/Broker/ScriptedBroker.h"

#include <sstream>

namespace {

// "/a/proxy/brokerinfo" is "a:brokerinfo"; a POST is named after its root element.
std::string messageOf(const HttpTestServer::Request& request) {
  const size_t proxy = request.target.find("/proxy");
  const std::string broker = proxy == std::string::npos ? "" : request.target.substr(1, proxy - 1) + ":";
  if (request.method == "GET") return broker + request.target.substr(request.target.rfind('/') + 1);
  const size_t end = request.body.find("-req");
  const size_t begin = request.body.rfind('<', end) + 1;
  return broker + request.body.substr(begin, end - begin);
}

}  // namespace

ScriptedBroker::ScriptedBroker(HttpTestServer::Security security)
    : tls_(security == HttpTestServer::Security::kTls),
      server_([this](const HttpTestServer::Request& request) { return answerTo(request); }, security) {}

void ScriptedBroker::answerWith(const std::string& key, Answer answer) {
  const std::scoped_lock lock(mutex_);
  script_[key].push_back(std::move(answer));
}

void ScriptedBroker::respond(const std::string& key, const std::string& elements) {
  const std::string root = key.substr(key.find(':') + 1) + "-rsp>";
  answer(key, "<" + root + elements + "</" + root);
}

ScriptedBroker::Answer ScriptedBroker::answerTo(const HttpTestServer::Request& request) {
  const std::string message = messageOf(request);
  const std::string unaddressed = message.substr(message.find(':') + 1);
  const std::scoped_lock lock(mutex_);
  for (const std::string& key : {message, unaddressed}) {
    const auto queue = script_.find(key);
    if (queue == script_.end()) continue;
    Answer answer = queue->second.front();
    if (queue->second.size() > 1) queue->second.pop_front();
    return answer;
  }
  if (unaddressed == "authenticate") return {.body = "<authenticate-rsp><cookie>c1</cookie></authenticate-rsp>"};
  return {.status = 500};
}

std::vector<std::string> ScriptedBroker::messages() const {
  std::vector<std::string> messages;
  for (const HttpTestServer::Request& request : server_.requests()) messages.push_back(messageOf(request));
  return messages;
}

void ScriptedBroker::configure(OvBrokerClient& client, const std::string& brokers) const {
  std::string entries = brokers.empty() ? "127.0.0.1" : "";
  std::istringstream names(brokers);
  for (std::string name; std::getline(names, name, ',');)
    entries += (entries.empty() ? "127.0.0.1/" : ",127.0.0.1/") + name;
  client.setServer(entries);
  client.setTcpPort(server_.port());
  client.setUseSSL(tls_);
  client.setRandomize(false);
}

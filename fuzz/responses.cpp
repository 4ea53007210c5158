// Every answer of a broker, through the client that reads it: the first byte chooses the exchange, the rest is the
// answer. Then the search for elements alone.

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <memory>
#include <string>

#include "Broker/OvBrokerClient.h"
#include "Broker/SimpleXML.h"
#include "Crypto/crypto.h"
#include "Http/HttpClient.h"

namespace {

// Gives the same answer to whatever is asked; a log-in that only comes before gives a cookie.
class AnsweringClient : public HttpClient {
 public:
  AnsweringClient(std::string answer, bool logsIn) : answer_(std::move(answer)), logsIn_(logsIn) {}

  std::string sendRequest(const std::string&, const std::string* content) override {
    if (logsIn_ && content && content->find("<authenticate-req>") != std::string::npos)
      return "<authenticate-rsp><cookie>c</cookie></authenticate-rsp>";
    return answer_;
  }

 private:
  std::string answer_;
  bool logsIn_;
};

const std::string& ticket() {
  static const std::string text = [] {
    char hexadecimal[513] = {};
    crypto_encrypt256("Ov:0:host:80:T", hexadecimal, sizeof hexadecimal);
    return std::string(hexadecimal);
  }();
  return text;
}

constexpr void (*kExchanges[])(OvBrokerClient&) = {
    [](OvBrokerClient& client) { client.getBrokerInfo(); },
    [](OvBrokerClient& client) { client.authenticate(); },
    [](OvBrokerClient& client) { client.authenticateTicket(ticket(), false); },
    [](OvBrokerClient& client) { client.authenticateTicket(ticket(), true); },
    [](OvBrokerClient& client) { client.getApplicationList(); },
    [](OvBrokerClient& client) { client.launchApplication("a"); },
    [](OvBrokerClient& client) { client.getConnectorInfo({}); },
    [](OvBrokerClient& client) { client.getFarmProperties(); },
    [](OvBrokerClient& client) { client.getSessionList(); },
};

constexpr size_t kLogIn = 1;

void check(bool holds) {
  if (!holds) abort();
}

// What a search promises: it goes forward, and the element lies within the text.
void search(const std::string& text, const char* name) {
  const SimpleXML document(text);
  SimpleXML attributes;
  SimpleXML content;
  for (int offset = 0;;) {
    const int next = document.FindTag(name, attributes, content, offset);
    if (next < 0) break;
    check(next > offset && static_cast<size_t>(next) <= text.size());
    const char* data = content.GetData();
    check(!data || strlen(data) <= text.size());
    offset = next;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const size_t exchange = data[0] % std::size(kExchanges);
  const std::string answer(reinterpret_cast<const char*>(data + 1), size - 1);
  OvBrokerClient client(std::make_unique<AnsweringClient>(answer, exchange != kLogIn));
  client.setServer("host");
  client.setSeamlessMode(1);
  try {
    kExchanges[exchange](client);
  } catch (const OvException&) {
    // a broker's error or a malformed answer, in words
  }
  search(answer, "application");
  search(answer, "a");
  return 0;
}

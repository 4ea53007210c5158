#pragma once

#include <deque>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Broker/OvBrokerClient.h"
#include "Support/HttpTestServer.h"

/// Brokers behind one port whose every answer a test writes: the entry "127.0.0.1/a" is broker "a".
///
/// Answers are queued by message ("authenticate", "brokerinfo"), for one broker alone by "a:authenticate"; the last of
/// a queue is given for ever. Without any, a log-in gives the cookie "c1", and all else the status 500.
class ScriptedBroker {
 public:
  using Answer = HttpTestServer::Answer;

  explicit ScriptedBroker(HttpTestServer::Security security = HttpTestServer::Security::kPlain);

  void answer(const std::string& key, const std::string& body) { answerWith(key, {.body = body}); }
  void answerWith(const std::string& key, Answer answer);
  /// The message's own document, with these elements.
  void respond(const std::string& key, const std::string& elements = "");

  /// The messages that came in so far, in order: "a:authenticate", or "authenticate" for the entry without a path.
  std::vector<std::string> messages() const;
  /// The body of the last request.
  std::string lastBody() const { return server_.requests().back().body; }
  const HttpTestServer& server() const { return server_; }

  /// Points a client at these entries, in this order: "a,b", or "" for the one without a path.
  void configure(OvBrokerClient& client, const std::string& brokers = "") const;

 private:
  Answer answerTo(const HttpTestServer::Request& request);

  std::mutex mutex_;
  std::map<std::string, std::deque<Answer>> script_;
  const bool tls_;
  HttpTestServer server_;
};

class ScriptedBrokerTest : public testing::Test {
 protected:
  ScriptedBrokerTest() { broker_.configure(client_); }

  ScriptedBroker broker_;
  OvBrokerClient client_;
};

/// The code and text with which `operation` throws an OvException, as "13 The data is invalid."; "none" if it doesn't.
template <typename Operation>
std::string errorOf(Operation operation) {
  try {
    operation();
  } catch (const OvException& exception) {
    return std::to_string(exception.getErrorCode()) + " " + exception.getErrorText();
  }
  return "none";
}

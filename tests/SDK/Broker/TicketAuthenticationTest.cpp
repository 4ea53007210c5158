// Tickets, with the broker's side of their ciphers written here a second time.

#include <regex>

#include "Crypto/RC4StreamCipher.h"
#include "Crypto/crypto.h"
#include "SDK/Broker/ScriptedBroker.h"

namespace {

std::string sealedTicket(const std::string& text) {
  char hexadecimal[513] = {};
  crypto_encrypt256(text.c_str(), hexadecimal, sizeof hexadecimal);
  return hexadecimal;
}

std::string rc4(std::string text, const std::string& key) {
  auto* bytes = reinterpret_cast<unsigned char*>(text.data());
  RC4StreamCipher cipher(reinterpret_cast<const unsigned char*>(key.data()), static_cast<long>(key.size()));
  cipher.Encrypt(bytes, bytes, static_cast<long>(text.size()));
  return text;
}

std::string toHexadecimal(const std::string& bytes) {
  std::string text;
  for (const char byte : bytes) {
    char digits[3];
    snprintf(digits, sizeof digits, "%02X", static_cast<unsigned char>(byte));
    text += digits;
  }
  return text;
}

// Issues credentials for the ticket "T42", and adds further elements to its answer.
class TicketBroker {
 public:
  explicit TicketBroker(std::string credentials, std::string elements = "",
                        HttpTestServer::Security security = HttpTestServer::Security::kPlain)
      : credentials_(std::move(credentials)),
        elements_(std::move(elements)),
        server_([this](const HttpTestServer::Request& request) { return answer(request); }, security) {}

  std::string port() const { return std::to_string(server_.port()); }
  const HttpTestServer& server() const { return server_; }

 private:
  HttpTestServer::Answer answer(const HttpTestServer::Request& request) const {
    std::smatch match;
    if (!std::regex_match(request.body, match, std::regex("<(\\w+)-req><ticket>([0-9A-F]+)</ticket></\\w+-req>")))
      return {.status = 500};
    std::string block;
    for (size_t i = 0; i < static_cast<size_t>(match[2].length()); i += 2)
      block += static_cast<char>(std::stoi(match[2].str().substr(i, 2), nullptr, 16));
    const std::string sharedKey(reinterpret_cast<const char*>(crypto_get_scatter_table256()), 256);
    block = rc4(block, sharedKey);
    if (!block.starts_with("T42:") || block.size() != 4 + 256) return {.status = 500};
    const std::string answered = toHexadecimal(rc4(credentials_, block.substr(4)));
    const std::string root = match[1].str() + "-rsp>";
    return {.body = "<" + root + elements_ + "<ticket>" + answered + "</ticket></" + root};
  }

  const std::string credentials_;
  const std::string elements_;
  HttpTestServer server_;
};

TEST(TicketAuthentication, ATicketGivesItsUsersCredentials) {
  const std::string full = "Ov:CORP:anna:" + std::string(256 - 13, 'x');
  const struct {
    std::string answered;
    std::string user;
    const char* error;
    const char* elements = "";
  } cases[] = {
      {"Ov:CORP:anna:secret", "CORP/anna/secret", "none"},
      {"Ov:CORP:anna:a:b", "CORP/anna/a:b", "none"},
      {"Ov::anna:secret", "/anna/secret", "none"},
      {full, "CORP/anna/" + full.substr(13), "none"},
      {full + "x", "old/old/old", "13 The data is invalid."},
      {"Ov:CORP:anna", "old/old/old", "13 The data is invalid."},
      {"No:CORP:anna:secret", "old/old/old", "13 The data is invalid."},
      {"", "old/old/old", "13 The data is invalid."},
      // The ticket is read before the error counts.
      {"Ov:CORP:anna:secret", "CORP/anna/secret", "9 late", "<errorcode>9</errorcode><errortext>late</errortext>"},
      {"damaged", "old/old/old", "13 The data is invalid.", "<errorcode>9</errorcode>"},
  };
  for (const auto& row : cases) {
    const TicketBroker broker(row.answered, row.elements);
    OvBrokerClient client;
    client.setServer("elsewhere");
    client.setDomain("old");
    client.setUsername("old");
    client.setPassword("old");
    const std::string ticket = sealedTicket("Ov:0:127.0.0.1:" + broker.port() + ":T42");
    EXPECT_EQ(errorOf([&] { client.authenticateTicket(ticket, false); }), row.error) << row.answered;
    EXPECT_EQ(client.getDomain() + "/" + client.getUsername() + "/" + client.getPassword(), row.user);
    EXPECT_EQ(client.getServer(), "elsewhere");
    EXPECT_EQ(client.getTcpPort(), broker.server().port());
  }
}

TEST(TicketAuthentication, ATicketNamesProtocolServerAndPort) {
  for (const auto security : {HttpTestServer::Security::kPlain, HttpTestServer::Security::kTls}) {
    const bool useSSL = security == HttpTestServer::Security::kTls;
    const TicketBroker broker("Ov:CORP:anna:secret", "", security);
    OvBrokerClient client;
    client.setUseSSL(!useSSL);
    // Empty fields vanish, what follows the fifth is ignored, and only 16 bits of the port count.
    const std::string port = std::to_string(broker.server().port() + 65536);
    client.authenticateTicket(sealedTicket("Ov::" + std::to_string(useSSL) + ":127.0.0.1:" + port + "::T42:more"),
                              false);
    EXPECT_EQ(client.getUsername(), "anna");
    EXPECT_EQ(client.getUseSSL(), useSSL);
    EXPECT_EQ(client.getTcpPort(), broker.server().port());
  }
}

TEST(TicketAuthentication, ValidatingLeavesTheUserAlone) {
  const TicketBroker broker("Ov:CORP:anna:secret");
  OvBrokerClient client;
  client.authenticateTicket(sealedTicket("Ov:0:127.0.0.1:" + broker.port() + ":T42"), true);
  EXPECT_EQ(client.getUsername(), "");
  EXPECT_THAT(broker.server().requests().at(0).body, testing::StartsWith("<validateticket-req>"));
}

TEST(TicketAuthentication, WhatIsNoTicketIsRefused) {
  OvBrokerClient client;
  const std::string good = "Ov:0:127.0.0.1:1:T";
  std::string damaged = sealedTicket(good);
  damaged[7] = damaged[7] == '0' ? '1' : '0';
  for (const std::string& ticket :
       {std::string(), std::string("garbage"), sealedTicket(good).substr(2), damaged, sealedTicket("Ov:0:127.0.0.1:1"),
        sealedTicket("Ov:0::1:T"), sealedTicket("X:0:h:1:T")})
    EXPECT_EQ(errorOf([&] { client.authenticateTicket(ticket, false); }), "87 Error 87 occurred!");
  EXPECT_EQ(client.getTcpPort(), 80);
  client.setConnectorLocale("zh-cn");  // its text has no place for the code
  EXPECT_EQ(errorOf([&] { client.authenticateTicket("garbage", false); }), "87 误差％d发生！");
}

TEST(TicketAuthentication, TheTicketsServerIsTriedOnceAndItsWordIsHeard) {
  ScriptedBroker broker;
  OvBrokerClient client;
  const std::string ticket = sealedTicket("Ov:0:127.0.0.1:" + std::to_string(broker.server().port()) + ":T");
  EXPECT_EQ(errorOf([&] { client.authenticateTicket(ticket, false); }),
            "1311 There are currently no logon servers available to service the logon request.");
  EXPECT_EQ(broker.messages().size(), 1u);
  broker.answer("authenticateticket", "<validateticket-rsp/>");
  EXPECT_EQ(errorOf([&] { client.authenticateTicket(ticket, false); }), "13 The data is invalid.");
  broker.respond("validateticket", "<errorcode>9</errorcode><errortext>used</errortext>");
  EXPECT_EQ(errorOf([&] { client.authenticateTicket(ticket, true); }), "9 used");
}

}  // namespace

// The second way in: a ticket that was issued elsewhere.

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "Broker/OvBrokerClient.h"
#include "Broker/Protocol.h"
#include "Broker/RequestDocument.h"
#include "Broker/ResponseFields.h"
#include "Crypto/RC4StreamCipher.h"
#include "Crypto/crypto.h"
#include "Support/OvWriteLog.h"
#include "Support/RandomBytes.h"
#include "Support/SecureMemory.h"

namespace protocol = orvane::protocol;
using orvane::RequestDocument;
using orvane::ResponseFields;

namespace {

constexpr size_t kBlockSize = 256;
constexpr std::string_view kMark = "Ov";

using SessionKey = std::vector<unsigned char>;

struct TicketAddress {
  bool useSSL = false;
  std::string host;
  int port = 0;
  std::string ticket;
};

struct TicketCredentials {
  std::string domain;
  std::string username;
  std::string password;
};

// Takes the text up to the next colon, or all of it, off the front.
std::string_view takeField(std::string_view& text) {
  const size_t colon = text.find(':');
  const std::string_view field = text.substr(0, colon);
  text.remove_prefix(colon == std::string_view::npos ? text.size() : colon + 1);
  return field;
}

// "Ov:<ssl>:<host>:<port>:<ticket>". Empty fields don't count.
std::optional<TicketAddress> readTicket(const std::string& ticket) {
  std::array<char, kBlockSize + 1> text{};
  if (!crypto_decrypt256(ticket.c_str(), text.data(), text.size())) return std::nullopt;
  std::vector<std::string> fields;
  for (std::string_view rest = text.data(); !rest.empty();) {
    const std::string_view field = takeField(rest);
    if (!field.empty()) fields.emplace_back(field);
  }
  orvane::wipe(text.data(), text.size());
  if (fields.size() < 5 || fields[0] != kMark) return std::nullopt;
  return TicketAddress{atoi(fields[1].c_str()) != 0, fields[2], static_cast<uint16_t>(atoi(fields[3].c_str())),
                       fields[4]};
}

// "<ticket>:" and the session key, enciphered under the key that all peers share, as hexadecimal.
std::string sealed(const std::string& ticket, const SessionKey& sessionKey) {
  std::string block = ticket + ":";
  const orvane::WipeAtEnd wipe(block);
  block.append(reinterpret_cast<const char*>(sessionKey.data()), sessionKey.size());
  auto* bytes = reinterpret_cast<unsigned char*>(block.data());
  RC4StreamCipher cipher(crypto_get_scatter_table256(), kBlockSize);
  cipher.Encrypt(bytes, bytes, static_cast<long>(block.size()));
  std::string text(2 * block.size() + 1, '\0');
  crypto_bintohex(bytes, block.size(), text.data(), text.size());
  text.pop_back();
  return text;
}

// "Ov:<domain>:<username>:<password>", enciphered under the session key. A field may be empty: not every user has a
// domain. The password is all the rest, colons included.
std::optional<TicketCredentials> readCredentials(const std::string& hexadecimal, const SessionKey& sessionKey) {
  std::string text(kBlockSize, '\0');
  const orvane::WipeAtEnd wipe(text);
  auto* bytes = reinterpret_cast<unsigned char*>(text.data());
  const size_t count = crypto_hextobin(hexadecimal.c_str(), bytes, text.size());
  RC4StreamCipher cipher(sessionKey.data(), static_cast<long>(sessionKey.size()));
  cipher.Decrypt(bytes, bytes, static_cast<long>(count));

  std::string_view rest(text.data(), strnlen(text.data(), count));
  if (std::count(rest.begin(), rest.end(), ':') < 3 || takeField(rest) != kMark) return std::nullopt;
  std::optional<TicketCredentials> credentials(std::in_place);  // moved, it would leave a short password behind
  credentials->domain = takeField(rest);
  credentials->username = takeField(rest);
  credentials->password = rest;
  return credentials;
}

}  // namespace

void OvBrokerClient::authenticateTicket(const std::string& ticket, bool validateOnly) {
  const std::optional<TicketAddress> address = readTicket(ticket);
  if (!address) win32Error(protocol::kErrorInvalidParameter, nullptr);

  SessionKey sessionKey(kBlockSize);
  const orvane::WipeAtEnd wipe(sessionKey);
  orvane::fillWithRandomBytes(sessionKey.data(), sessionKey.size());
  std::string sealedTicket;
  try {
    sealedTicket = sealed(address->ticket, sessionKey);
  } catch (const std::bad_alloc&) {
    win32Error(protocol::kErrorOutOfMemory, nullptr);
  }

  useSSL_ = address->useSSL;
  tcpPort_ = address->port;
  const std::string message = validateOnly ? "validateticket" : "authenticateticket";
  RequestDocument request((message + "-req").c_str(), useUtf8OnWire_);
  request.add("ticket", sealedTicket);
  const std::string body = request.text();
  OvWriteLog(5, "%s::authenticateTicket, request=%s", "OvBrokerClient", body.c_str());
  std::string response;
  if (!sendRequest(address->host.c_str(), body.c_str(), response)) win32Error(protocol::kErrorNoLogonServers, nullptr);
  OvWriteLog(5, "%s::authenticateTicket, response=%s", "OvBrokerClient", response.c_str());

  const ResponseFields fields = answerIn(std::move(response), message + "-rsp");
  const ResponseFields::Error error = fields.error();
  const std::optional<std::string> answer = validateOnly ? std::nullopt : fields.text("ticket");
  if (answer) {
    std::optional<TicketCredentials> credentials = readCredentials(*answer, sessionKey);
    if (!credentials) win32Error(protocol::kErrorInvalidData, nullptr);
    domain_ = credentials->domain;
    username_ = credentials->username;
    orvane::wipe(password_);
    password_ = credentials->password;
    orvane::wipe(credentials->password);
  }
  if (error.code != 0) win32Error(error.code, error.text.c_str());
}

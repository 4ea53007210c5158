#include "Tickets.h"

#include <algorithm>
#include <vector>

#include "Crypto/RC4StreamCipher.h"
#include "Crypto/crypto.h"
#include "DemoBroker.h"
#include "Support/SecureMemory.h"

namespace orvane::demo {
namespace {

RC4StreamCipher cipherOf(const unsigned char* key256) { return {key256, 256}; }

}  // namespace

std::optional<TicketRequest> decipherTicketRequest(const std::string& hexadecimal) {
  TicketRequest request;
  const size_t keyLength = request.sessionKey.size();
  std::vector<unsigned char> block(hexadecimal.size() / 2);
  if (hexadecimal.size() % 2 != 0 || block.size() < keyLength + 2) return std::nullopt;
  crypto_hextobin(hexadecimal.c_str(), block.data(), block.size());
  cipherOf(crypto_get_scatter_table256()).Decrypt(block.data(), block.data(), static_cast<long>(block.size()));

  const auto colon = block.end() - static_cast<ptrdiff_t>(keyLength) - 1;
  if (*colon != ':') return std::nullopt;
  request.ticket.assign(block.begin(), colon);
  std::copy(colon + 1, block.end(), request.sessionKey.begin());
  return request;
}

std::string encipheredCredentials(const User& user, const TicketRequest& request) {
  std::string text = "Ov:" + user.domain + ":" + user.name + ":" + user.password;
  auto* const bytes = reinterpret_cast<unsigned char*>(text.data());
  cipherOf(request.sessionKey.data()).Encrypt(bytes, bytes, static_cast<long>(text.size()));

  std::string hexadecimal(2 * text.size() + 1, '\0');
  crypto_bintohex(bytes, text.size(), hexadecimal.data(), hexadecimal.size());
  hexadecimal.pop_back();
  return hexadecimal;
}

std::string decipheredPassword(const std::string& hexadecimal) {
  char password[257] = "";
  crypto_decrypt_password(hexadecimal.c_str(), password, sizeof password - 1);
  std::string result = password;
  wipe(password, sizeof password);
  return result;
}

std::string ticketString(bool useTls, const std::string& host, uint16_t port, const std::string& ticket) {
  const std::string text =
      std::string("Ov:") + (useTls ? "1" : "0") + ":" + host + ":" + std::to_string(port) + ":" + ticket;
  char enciphered[513] = "";
  crypto_encrypt256(text.c_str(), enciphered, sizeof enciphered);
  return enciphered;
}

}  // namespace orvane::demo

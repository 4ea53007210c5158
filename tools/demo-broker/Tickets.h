#pragma once

#include <array>
#include <optional>
#include <string>

#include "FarmDescription.h"

namespace orvane::demo {

/// What a client sends to exchange a ticket, deciphered.
struct TicketRequest {
  std::string ticket;
  std::array<unsigned char, 256> sessionKey;
};

/// Nothing if `hexadecimal` doesn't hold a ticket, a colon and a key.
std::optional<TicketRequest> decipherTicketRequest(const std::string& hexadecimal);

/// The user's credentials under the session key, as upper-case hexadecimal.
std::string encipheredCredentials(const User& user, const TicketRequest& request);

/// The password of an authenticate message in the clear, in the message's coding. The caller wipes it.
std::string decipheredPassword(const std::string& hexadecimal);

}  // namespace orvane::demo

#pragma once

#include <stdexcept>
#include <string>

#include "Broker/OvBrokerClient.h"

namespace orvane::walkthrough {

/// A step of the walkthrough that didn't work out, in words for the user.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Why the client's server doesn't answer, as the transport tells it (the name is unknown, the connection is refused,
/// the status isn't 200); empty if it does. Asks once more to find out, since the client itself only tells that nobody
/// did.
std::string transportProblem(const OvBrokerClient& client);

/// What went wrong while `doing` something, from the protocol library's error.
std::string explained(const std::string& doing, const OvException& exception);

}  // namespace orvane::walkthrough

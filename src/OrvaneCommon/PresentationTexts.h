#pragma once

#include <string>

/// @file
/// How values of the farm records read to the user, in the user's language. Any thread.

namespace orvane {

/// The label of a connection speed, 1 (modem) to 7 (automatic). Any other value shows as a local network.
std::string connectionSpeedLabel(int speed);

/// The name of a location's protocol: 1 is HTTPS, any other value HTTP.
std::string protocolName(int protocol);

}  // namespace orvane

#pragma once

/// Numbers and texts that several messages of the protocol share.
namespace orvane::protocol {

constexpr int kErrorAccessDenied = 5;
constexpr int kErrorInvalidData = 13;
constexpr int kErrorInvalidParameter = 87;
constexpr int kErrorNotLoggedIn = 1244;
constexpr int kErrorNoLogonServers = 1311;
constexpr int kErrorOutOfMemory = 6000;
constexpr int kErrorCannotMake = -1073282990;  // 0xC0070052 as a signed number

constexpr const char* kClientVersion = "6.0";

}  // namespace orvane::protocol

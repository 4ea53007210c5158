#pragma once

#include <cstdint>
#include <string>

/// A running session as it was when it was asked for: a copy that nothing changes afterwards.
struct OvSessionInfo {
  uint32_t sessionId = 0;
  bool sessionSharing = false;  ///< it may take further applications
  bool sslGateway = false;      ///< it runs through an SSL gateway
  std::string server;
  std::string domain;    ///< empty if none
  std::string username;  ///< empty if none
};

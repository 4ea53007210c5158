#pragma once

#include <cstdint>
#include <string>

namespace orvane {

/// Where a registry lives. All processes that shall see the same sessions use the same names; the defaults are those of
/// the machine's own registry.
struct SessionRegistryNames {
  std::string semaphore = "/OvSessionManager.mutex";
  std::string sharedMemory = "/OvSessionManager.shared";
  /// A process listens at this path with "." and its identifier behind it.
  std::string socketPrefix = "/tmp/OvSessionManager.socket";

  std::string socketPath(uint32_t processId) const { return socketPrefix + '.' + std::to_string(processId); }
};

}  // namespace orvane

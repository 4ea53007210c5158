#pragma once

#include <csignal>
#include <cstdint>

#include "Sessions/OvSessionObserver.h"

class OvSettings;

namespace orvane::demo {

/// Holds a pretended session: makes it known in the registry, says what others ask of it, and ends when it is logged
/// off or disconnected or when the process is told to end.
class SessionHolder : private OvSessionObserver {
 public:
  /// Made before any other thread of the process, which must inherit that signals to end are left to this object.
  SessionHolder();

  /// Returns when the session has ended. Where the registry has no room for it, or there is none, nobody else knows of
  /// it and it ends with the process.
  void hold(const OvSettings& record);

 private:
  void logoffSession(uint32_t sessionId) override;
  void disconnectSession(uint32_t sessionId) override;
  void startApplication(uint32_t sessionId, const char* program, const char* workingDir) override;
  void activateSessionView(uint32_t sessionId) override;

  sigset_t endingSignals_;
};

}  // namespace orvane::demo

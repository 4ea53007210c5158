#pragma once

#include <cstdint>

/// Does in a running session what others ask for; given to OvSessionManager::addSession by the process that holds it.
///
/// The calls come on the listener thread, or on the caller's own if it is in this process, and several may come at the
/// same time. While one runs on the listener thread, the process takes no other event: hand long work on. The texts
/// live until the call returns. A call must not throw.
class OvSessionObserver {
 public:
  virtual ~OvSessionObserver() = default;

  /// Logs the user off the server, which ends the session.
  virtual void logoffSession(uint32_t sessionId) = 0;
  /// Leaves the session running on the server and ends the connection to it.
  virtual void disconnectSession(uint32_t sessionId) = 0;
  /// Starts a program in the session. Neither text is null; `workingDir` may be empty.
  virtual void startApplication(uint32_t sessionId, const char* program, const char* workingDir) = 0;
  /// Brings the session's windows to the front.
  virtual void activateSessionView(uint32_t sessionId) = 0;
};

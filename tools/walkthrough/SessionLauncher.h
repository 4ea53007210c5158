#pragma once

#include <list>
#include <string>

#include "Files/OvSettings.h"
#include "SessionProcess.h"
#include "Sessions/OvSessionManager.h"

namespace orvane::walkthrough {

/// Gets launched applications running: in a session that fits if there is one, else in a session program of their own.
class SessionLauncher : private OvSessionManagerObserver {
 public:
  /// Launch files go into `folder`.
  SessionLauncher(const std::string& program, const std::string& folder);
  ~SessionLauncher() override;

  /// Returns when the application was handed to a session, or when the session program holds one of its own or has
  /// ended.
  /// @throws Failure in words.
  void start(const OvSettings& record);
  /// Disconnects the sessions that were started here and waits for their programs to end; one that others don't know of
  /// is told to end by a signal.
  void endSessions();

 private:
  bool joinRunningSession(const OvSettings& record);
  void startSession(const OvSettings& record);

  void sessionAdded(uint32_t sessionId) override;
  void sessionRemoved(uint32_t) override {}

  struct StartedSession {
    StartedSession(const std::string& program, const std::string& launchFile) : process(program, launchFile) {}
    uint32_t id = 0;  // 0: not known to others
    SessionProcess process;
  };

  const std::string program_;
  const std::string launchFile_;
  const int added_;  // an event counter that sessionAdded raises
  OvSessionManager manager_;
  std::list<StartedSession> started_;
};

}  // namespace orvane::walkthrough

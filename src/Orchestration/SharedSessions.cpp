// What launches have to do with the sessions that run.

#include <cstring>

#include "Orchestration/ApplicationLauncher.h"
#include "Sessions/OvSessionManager.h"
#include "Support/OvWriteLog.h"

bool ApplicationLauncher::startSharedSession(const OvSettings& settings) {
  constexpr int kMostAttempts = 50;
  const char* const program = settings.getProgramFullPath();
  const char* const workingDir = settings.getProgramWorkingDir();
  // No session can be told of these, which says nothing against any of them.
  for (const char* text : {program, workingDir}) {
    if (text != nullptr && strlen(text) > OvSessionManager::kLongestText) return false;
  }
  OvSessionManager manager;
  uint32_t sessionId = manager.findSession(settings);
  for (int attempt = 1; sessionId != 0 && attempt <= kMostAttempts; ++attempt) {
    if (manager.startApplication(sessionId, program, workingDir)) return true;
    OvWriteLog(4, "%s: Removing not valid session from list id = %u", __func__, sessionId);
    manager.removeSession(sessionId);
    sessionId = manager.findSession(settings);
  }
  return false;
}

void ApplicationLauncher::disconnectAllOpenedSessions() {
  OvSessionManager manager;
  for (const auto& session : manager.getSessionList()) manager.disconnectSession(session->sessionId);
}

#include "SessionHolder.h"

#include <iostream>
#include <sstream>
#include <string>

#include <unistd.h>

#include "PrintableText.h"
#include "Sessions/OvSessionManager.h"

namespace orvane::demo {

namespace {

// One line at one go: commands come on other threads, and another program may write to the same place.
void say(uint32_t sessionId, const std::string& what) {
  std::ostringstream line;
  line << "Session " << sessionId << ": " << what << '\n';
  std::cout << line.str() << std::flush;
}

}  // namespace

SessionHolder::SessionHolder() {
  sigemptyset(&endingSignals_);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&endingSignals_, signal);
  pthread_sigmask(SIG_BLOCK, &endingSignals_, nullptr);
}

void SessionHolder::hold(const OvSettings& record) {
  OvSessionManager manager;
  const uint32_t sessionId = manager.addSession(record, this);
  say(sessionId, sessionId == 0 ? "is running, and nobody else can know of it." : "is running.");
  // The end of the session and the end of the process are one: either way comes as a signal to this process.
  int signal = 0;
  sigwait(&endingSignals_, &signal);
  if (sessionId != 0) manager.removeSession(sessionId);
  say(sessionId, "has ended.");
}

void SessionHolder::logoffSession(uint32_t sessionId) {
  say(sessionId, "would log off.");
  kill(getpid(), SIGTERM);
}

void SessionHolder::disconnectSession(uint32_t sessionId) {
  say(sessionId, "would disconnect.");
  kill(getpid(), SIGTERM);
}

void SessionHolder::startApplication(uint32_t sessionId, const char* program, const char* workingDir) {
  say(sessionId, "would run " + printable(program) + (*workingDir ? " in " + printable(workingDir) : "") + " as well.");
}

void SessionHolder::activateSessionView(uint32_t sessionId) { say(sessionId, "would come to the front."); }

}  // namespace orvane::demo

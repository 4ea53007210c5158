#include "SessionLauncher.h"

#include <chrono>
#include <cstring>
#include <filesystem>
#include <iostream>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include "Explanation.h"

namespace orvane::walkthrough {

namespace {

using Clock = std::chrono::steady_clock;

// How long a session program may take until its session is known.
constexpr std::chrono::seconds kPatience{10};

// A session whose process doesn't answer is taken for dead and forgotten; so many may be in a row.
constexpr int kMostDeadSessions = 50;

}  // namespace

SessionLauncher::SessionLauncher(const std::string& program, const std::string& folder)
    : program_(program),
      launchFile_((std::filesystem::path(folder) / "launch.ovl").string()),
      added_(eventfd(0, EFD_CLOEXEC)),
      manager_(this) {}

SessionLauncher::~SessionLauncher() { close(added_); }

void SessionLauncher::start(const OvSettings& record) {
  if (!joinRunningSession(record)) startSession(record);
}

bool SessionLauncher::joinRunningSession(const OvSettings& record) {
  // A text that no event can hold says nothing against the sessions.
  for (const char* text : {record.getProgramFullPath(), record.getProgramWorkingDir()}) {
    if (text && strlen(text) > OvSessionManager::kLongestText) return false;
  }
  for (int dead = 0; dead < kMostDeadSessions; ++dead) {
    const uint32_t sessionId = manager_.findSession(record);
    if (sessionId == 0) return false;
    if (manager_.startApplication(sessionId, record.getProgramFullPath(), record.getProgramWorkingDir())) {
      std::cout << "It goes to session " << sessionId << ", which is running.\n" << std::flush;
      return true;
    }
    manager_.removeSession(sessionId);
  }
  return false;
}

void SessionLauncher::startSession(const OvSettings& record) {
  if (!record.saveOvlFile(launchFile_.c_str())) throw Failure("The launch file " + launchFile_ + " can't be written.");
  std::cout << "No running session fits. The launch file is " << launchFile_ << ".\n" << std::flush;

  StartedSession& session = started_.emplace_back(program_, launchFile_);
  const auto deadline = Clock::now() + kPatience;
  pollfd waiting[] = {{added_, POLLIN, 0}, {session.process.descriptor(), POLLIN, 0}};
  while ((session.id = manager_.findSession(record)) == 0) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    if (left <= 0 || waiting[1].revents != 0) break;
    poll(waiting, 2, static_cast<int>(left));
    uint64_t count = 0;
    if (waiting[0].revents != 0 && read(added_, &count, sizeof count) < 0) break;
  }
  if (session.id != 0) return;
  if (waiting[1].revents == 0) {
    std::cout << "Its session isn't known to others, so nothing can share it.\n";
    return;
  }
  session.process.waitForEnd();
  started_.pop_back();
}

void SessionLauncher::endSessions() {
  for (StartedSession& session : started_) {
    if (session.id != 0 && manager_.disconnectSession(session.id)) session.process.waitForEnd();
  }
  started_.clear();
}

void SessionLauncher::sessionAdded(uint32_t) {
  const uint64_t one = 1;
  if (write(added_, &one, sizeof one) < 0) return;  // the counter is full: it is readable as it is
}

}  // namespace orvane::walkthrough

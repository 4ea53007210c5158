#include "ShownSessions.h"

#include <iostream>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include "Failure.h"

namespace orvane::walkthrough {

namespace {

constexpr int kPatienceMilliseconds = 10'000;

}  // namespace

ShownSessions::ShownSessions()
    : added_(eventfd(0, EFD_CLOEXEC)), manager_(std::in_place, static_cast<OvSessionManagerObserver*>(this)) {}

bool ShownSessions::start(const std::string& executable, const std::vector<std::string>& arguments,
                          const std::string&) try {
  ++starts_;
  problem_.clear();
  const std::string& launchFile = arguments.back();
  std::cout << "No running session fits. The launch file is " << launchFile << ".\n" << std::flush;
  Started& session = started_.emplace_back(executable, launchFile);
  session.id = awaitSession(session.process);
  if (session.id != 0) return true;
  pollfd end{session.process.descriptor(), POLLIN, 0};
  if (poll(&end, 1, 0) > 0) {
    session.process.waitForEnd();
    started_.pop_back();
  } else {
    std::cout << "Its session isn't known to others, so nothing can share it.\n";
  }
  return true;
} catch (const Failure& failure) {
  problem_ = failure.what();
  return false;
}

uint32_t ShownSessions::awaitSession(const SessionProcess& process) {
  lastAdded_ = 0;
  pollfd waiting[] = {{added_.number(), POLLIN, 0}, {process.descriptor(), POLLIN, 0}};
  uint64_t count = 0;
  if (poll(waiting, 2, kPatienceMilliseconds) <= 0 || waiting[0].revents == 0) return 0;
  return read(added_.number(), &count, sizeof count) < 0 ? 0 : lastAdded_.load();
}

void ShownSessions::end() {
  for (Started& session : started_) {
    if (session.id != 0 && manager_->disconnectSession(session.id)) session.process.waitForEnd();
  }
  started_.clear();
}

void ShownSessions::close() {
  started_.clear();
  manager_.reset();
}

void ShownSessions::sessionAdded(uint32_t sessionId) {
  lastAdded_ = sessionId;
  const uint64_t one = 1;
  if (write(added_.number(), &one, sizeof one) < 0) return;  // the counter is full: it is readable as it is
}

}  // namespace orvane::walkthrough

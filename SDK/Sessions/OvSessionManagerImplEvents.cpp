#include <algorithm>
#include <cerrno>
#include <chrono>

#include <sys/socket.h>
#include <sys/time.h>

#include "Sessions/CONTEXTSTRUCT.h"
#include "Sessions/FixedText.h"
#include "Sessions/SocketAddress.h"
#include "Support/FileDescriptor.h"
#include "Support/OvWriteLog.h"

namespace {

constexpr char kClass[] = "OvSessionManagerImpl";
constexpr char kSend[] = "sendEvent";

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// A holder is given time for an observer that is at work, as a launcher takes one that doesn't answer for dead. A
// broadcast is not worth a long wait; the least is enough for every process that isn't stuck.
constexpr milliseconds kDeliveryPatience{5000};
constexpr milliseconds kBroadcastPatience{2000};
constexpr milliseconds kMostBroadcastPatience{1000};
constexpr milliseconds kLeastBroadcastPatience{10};

// Runs a socket call again if a signal broke it off; the socket's own time limit bounds each run.
template <typename Call>
auto repeatedWhenInterrupted(Clock::time_point deadline, Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR && Clock::now() < deadline) result = call();
  return result;
}

// False, with the reason in errno.
bool connectTo(const std::string& path, int socket, milliseconds patience) {
  const orvane::SocketAddress address(path);
  if (!address.isValid()) {
    errno = ENAMETOOLONG;
    return false;
  }
  const auto seconds = std::chrono::floor<std::chrono::seconds>(patience);
  const timeval limit{seconds.count(), std::chrono::microseconds(patience - seconds).count()};  // for sending too
  if (setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit) != 0) return false;
  const int result = repeatedWhenInterrupted(Clock::now() + patience,
                                             [&] { return connect(socket, address.pointer(), address.size()); });
  if (result != 0) return false;
  // Another user may have taken the path of a process that died: command lines are none of his business.
  errno = EACCES;
  return orvane::isOfOurUser(socket);
}

}  // namespace

int OvSessionManagerImpl::fireEvent(const OvSESSIONMANAGER_EVENT& event, bool broadcast) {
  if (!isOpen(__func__)) return 0;
  switch (event.eventCode) {
    case SessionAdded:
      context_->managerObservers.callEach([&](OvSessionManagerObserver& to) { to.sessionAdded(event.sessionId); });
      break;
    case SessionRemoved:
      context_->managerObservers.callEach([&](OvSessionManagerObserver& to) { to.sessionRemoved(event.sessionId); });
      break;
    case LogoffSession:
    case DisconnectSession:
    case StartApplicationEvent:
    case ActivateSessionView:
      return fireSessionEvent(event, broadcast);
    default:
      return 0;
  }
  if (broadcast) broadcastEvent(event);
  return 0;
}

int OvSessionManagerImpl::fireSessionEvent(const OvSESSIONMANAGER_EVENT& event, bool broadcast) {
  const std::unique_ptr<OvSESSION_INFO> record = getSessionInfo(event.sessionId);
  if (!record) return 0;
  if (record->processId != getProcessId()) return broadcast ? sendEvent(record->processId, event) : 0;

  const auto program = orvane::fixedText(event.program);
  const auto workingDir = orvane::fixedText(event.workingDir);
  if (event.eventCode == StartApplicationEvent && (!program || !workingDir)) {
    OvWriteLog(2, "%s::%s: text without end", kClass, "fireEvent");
    return 0;
  }
  const auto handOver = [&](OvSessionObserver& observer) {
    switch (event.eventCode) {
      case LogoffSession:
        return observer.logoffSession(event.sessionId);
      case DisconnectSession:
        return observer.disconnectSession(event.sessionId);
      case StartApplicationEvent:
        return observer.startApplication(event.sessionId, event.program, event.workingDir);
      default:
        return observer.activateSessionView(event.sessionId);
    }
  };
  return context_->sessionObservers.call(record->observer, handOver) ? 1 : 0;
}

void OvSessionManagerImpl::broadcastEvent(const OvSESSIONMANAGER_EVENT& event) {
  const auto deadline = Clock::now() + kBroadcastPatience;
  for (const uint32_t processId : getProcessList()) {
    const auto left = std::chrono::floor<milliseconds>(deadline - Clock::now());
    send(processId, event, std::clamp(left, kLeastBroadcastPatience, kMostBroadcastPatience));
  }
}

int OvSessionManagerImpl::sendEvent(uint32_t processId, const OvSESSIONMANAGER_EVENT& event) {
  return send(processId, event, kDeliveryPatience);
}

int OvSessionManagerImpl::send(uint32_t processId, const OvSESSIONMANAGER_EVENT& event, milliseconds patience) {
  if (!isOpen(kSend)) return 0;
  if (processId == getProcessId()) return 1;
  const orvane::FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (!socket.isOpen()) {
    OvWriteLog(2, "%s::%s: error creating UNIX domain socket (errno=%d)", kClass, kSend, errno);
    return 0;
  }
  const std::string path = context_->names.socketPath(processId);
  if (!connectTo(path, socket.number(), patience)) {
    OvWriteLog(2, "%s::%s: error connecting UNIX domain socket to '%s' (errno=%d)", kClass, kSend, path.c_str(), errno);
    return 0;
  }
  const ssize_t sent = repeatedWhenInterrupted(
      Clock::now() + patience, [&] { return ::send(socket.number(), &event, sizeof event, MSG_NOSIGNAL); });
  if (sent != static_cast<ssize_t>(sizeof event)) {
    OvWriteLog(2, "%s::%s: error sending event (errno=%d)", kClass, kSend, errno);
    return 0;
  }
  return 1;
}

#include "Sessions/SessionListener.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Sessions/SocketAddress.h"
#include "Support/OvWriteLog.h"

namespace orvane {

namespace {

using Clock = EventConnection::Clock;

constexpr int kBacklog = 10;
constexpr auto kEventPatience = std::chrono::seconds(1);
constexpr int kShortageMilliseconds = 100;
constexpr size_t kMostConnections = 64;

constexpr char kClass[] = "OvSessionManagerImpl";
constexpr char kThread[] = "listenerThread";

// What a process that had our identifier left when it died: a socket of our user that nobody listens on.
bool isStale(const SocketAddress& address, const std::string& path) {
  struct stat file {};
  if (lstat(path.c_str(), &file) != 0 || !S_ISSOCK(file.st_mode) || file.st_uid != geteuid()) return false;
  const FileDescriptor probe(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  return probe.isOpen() && connect(probe.number(), address.pointer(), address.size()) != 0 && errno == ECONNREFUSED;
}

// What the system lacks now, it may have soon; meanwhile, don't keep the processor busy.
void pauseInShortage() { poll(nullptr, 0, kShortageMilliseconds); }

void logIncomplete(const EventConnection& connection) {
  OvWriteLog(2, "%s::%s: error receiving event (bytesRead=%d)", kClass, kThread, connection.bytesRead());
}

}  // namespace

SessionListener::SessionListener(std::string path, Handler handler)
    : path_(std::move(path)), handler_(std::move(handler)) {}

SessionListener::~SessionListener() {
  stop();
  if (thread_.joinable()) thread_.join();
  if (listeningSocket_ >= 0) close(listeningSocket_);
}

bool SessionListener::start(const char* function) {
  listeningSocket_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (listeningSocket_ < 0) {
    OvWriteLog(2, "%s: error creating UNIX domain socket (errno=%d)", function, errno);
    return false;
  }
  if (!bindToPath()) {
    OvWriteLog(2, "%s: error binding UNIX domain socket to '%s' (errno=%d)", function, path_.c_str(), errno);
    return false;
  }
  if (listen(listeningSocket_, kBacklog) != 0) {
    OvWriteLog(2, "%s: error listening on UNIX domain socket (errno=%d)", function, errno);
    return false;
  }
  try {
    thread_ = std::thread(&SessionListener::listenerThread, this);
  } catch (const std::system_error& error) {
    OvWriteLog(2, "%s: error starting listener thread (errno=%d)", function, error.code().value());
    return false;
  }
  return true;
}

void SessionListener::stop() {
  if (!isBound_) return;
  isBound_ = false;
  shutdown(listeningSocket_, SHUT_RDWR);
  unlink(path_.c_str());
}

bool SessionListener::bindToPath() {
  const SocketAddress address(path_);
  if (!address.isValid()) {
    errno = ENAMETOOLONG;
    return false;
  }
  if (isStale(address, path_)) unlink(path_.c_str());
  // The path takes over this mode when it is made, so there is no moment at which others could connect.
  if (fchmod(listeningSocket_, S_IRWXU) != 0) return false;
  isBound_ = bind(listeningSocket_, address.pointer(), address.size()) == 0;
  return isBound_;
}

void SessionListener::listenerThread() {
  for (bool isOpen = true; isOpen;) {
    if (waitForInput()) isOpen = acceptConnection();
    serveConnections();
  }
  for (const auto& connection : connections_) logIncomplete(*connection);
  connections_.clear();
}

// True if somebody wants to connect or the socket is closed; else a connection has input or is out of time.
bool SessionListener::waitForInput() const {
  std::vector<pollfd> sockets = {{listeningSocket_, POLLIN, 0}};
  Clock::time_point deadline = Clock::time_point::max();
  for (const auto& connection : connections_) {
    sockets.push_back({connection->socket(), POLLIN, 0});
    deadline = std::min(deadline, connection->deadline());
  }
  int milliseconds = -1;
  if (!connections_.empty()) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    milliseconds = static_cast<int>(std::max<decltype(left)>(left, 0));
  }
  const int ready = poll(sockets.data(), sockets.size(), milliseconds);
  if (ready < 0 && errno != EINTR) {
    pauseInShortage();
    return !isBound_;
  }
  return ready > 0 && sockets[0].revents != 0;
}

// False when the socket is closed, or as good as that.
bool SessionListener::acceptConnection() {
  const int socket = accept4(listeningSocket_, nullptr, nullptr, SOCK_CLOEXEC);
  if (socket >= 0) {
    isShort_ = false;
    auto connection = std::make_unique<EventConnection>(socket, Clock::now() + kEventPatience);
    if (!isOfOurUser(socket)) {
      OvWriteLog(2, "%s::%s: event of another user refused", kClass, kThread);
      return true;
    }
    // The oldest may have brought its event since it was last looked at.
    if (connections_.size() >= kMostConnections) serveConnections();
    if (connections_.size() >= kMostConnections) {
      logIncomplete(*connections_.front());
      connections_.erase(connections_.begin());
    }
    connections_.push_back(std::move(connection));
    return true;
  }
  const int reason = errno;
  if (reason == EINTR || reason == ECONNABORTED) return true;

  const bool willPass = reason == EMFILE || reason == ENFILE || reason == ENOBUFS || reason == ENOMEM;
  if (!isShort_) OvWriteLog(2, "%s::%s: socket accept failed (errno=%d)", kClass, kThread, reason);
  isShort_ = willPass;
  // The end of the thread for a shortage that passes would make the process deaf, while peers could still connect.
  if (!willPass) {
    shutdown(listeningSocket_, SHUT_RDWR);
    return false;
  }
  pauseInShortage();
  return isBound_;
}

void SessionListener::serveConnections() {
  for (size_t index = 0; index < connections_.size();) {
    const EventConnection::State state = connections_[index]->receive();
    // Asked only after the reading: the handler of another event may have taken longer than the patience.
    if (state == EventConnection::State::Incomplete && Clock::now() < connections_[index]->deadline()) {
      ++index;
      continue;
    }
    std::unique_ptr<EventConnection> connection = std::move(connections_[index]);
    connections_.erase(connections_.begin() + static_cast<std::ptrdiff_t>(index));
    if (state != EventConnection::State::Complete) {
      logIncomplete(*connection);
      continue;
    }
    const OvSESSIONMANAGER_EVENT event = connection->event();
    connection.reset();
    handler_(event);
  }
}

}  // namespace orvane

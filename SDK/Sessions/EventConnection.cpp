#include "Sessions/EventConnection.h"

#include <cerrno>

#include <sys/socket.h>

namespace orvane {

EventConnection::State EventConnection::receive() {
  while (received_ < sizeof event_) {
    char* const rest = reinterpret_cast<char*>(&event_) + received_;
    const ssize_t count = recv(socket_.number(), rest, sizeof event_ - received_, MSG_DONTWAIT);
    if (count > 0) {
      received_ += static_cast<size_t>(count);
    } else if (count == 0) {
      return State::Failed;
    } else if (errno == EAGAIN) {
      return State::Incomplete;
    } else if (errno != EINTR) {
      isBroken_ = true;
      return State::Failed;
    }
  }
  return State::Complete;
}

}  // namespace orvane

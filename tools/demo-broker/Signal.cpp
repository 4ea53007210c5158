#include "Signal.h"

#include <cerrno>
#include <cstdint>
#include <system_error>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace orvane::demo {

Signal::Signal() : descriptor_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (descriptor_ < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
}

Signal::~Signal() { close(descriptor_); }

void Signal::raise() { eventfd_write(descriptor_, 1); }

bool Signal::isRaised() const {
  pollfd entry{descriptor_, POLLIN, 0};
  return poll(&entry, 1, 0) == 1;
}

}  // namespace orvane::demo

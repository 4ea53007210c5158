#pragma once

#include <string>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace orvane {

/// The address of a UNIX-domain socket at a path.
class SocketAddress {
 public:
  explicit SocketAddress(const std::string& path) : isValid_(path.size() < sizeof address_.sun_path) {
    if (isValid_) path.copy(address_.sun_path, path.size());
  }

  /// False if the path is too long for the system.
  bool isValid() const { return isValid_; }
  const sockaddr* pointer() const { return reinterpret_cast<const sockaddr*>(&address_); }
  socklen_t size() const { return sizeof address_; }

 private:
  sockaddr_un address_{AF_UNIX, {}};
  bool isValid_;
};

/// True if the process at the other end of the connection runs as the user that we run as.
inline bool isOfOurUser(int socket) {
  ucred peer{};
  socklen_t size = sizeof peer;
  return getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == geteuid();
}

}  // namespace orvane

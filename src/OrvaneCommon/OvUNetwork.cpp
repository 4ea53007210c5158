#include "OrvaneCommon/OvUNetwork.h"

#include <memory>
#include <mutex>
#include <optional>

#include <ifaddrs.h>
#include <net/if.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include "Support/FileDescriptor.h"
#include "Support/OvWriteLog.h"

namespace {

// Connecting a datagram socket only makes the system look for a route.
bool hasRoute(const addrinfo& address) {
  const orvane::FileDescriptor file(socket(address.ai_family, address.ai_socktype | SOCK_CLOEXEC, 0));
  return file.isOpen() && connect(file.number(), address.ai_addr, address.ai_addrlen) == 0;
}

struct SocketOption {
  int level, name;
};

constexpr SocketOption kKeepaliveOptions[] = {
    {SOL_SOCKET, SO_KEEPALIVE}, {IPPROTO_TCP, TCP_KEEPCNT}, {IPPROTO_TCP, TCP_KEEPIDLE}, {IPPROTO_TCP, TCP_KEEPINTVL}};

bool takesKeepaliveOptions(int file) {
  bool takesAll = true;
  for (const SocketOption& option : kKeepaliveOptions) {
    constexpr int kOn = 1;
    takesAll = setsockopt(file, option.level, option.name, &kOn, sizeof kOn) == 0 && takesAll;
  }
  return takesAll;
}

}  // namespace

bool OvU_IsHostReachable(const std::string& host) {
  addrinfo hints{};
  hints.ai_socktype = SOCK_DGRAM;
  addrinfo* list = nullptr;
  constexpr const char* kAnyPort = "9";
  if (getaddrinfo(host.c_str(), kAnyPort, &hints, &list) != 0) return false;
  const std::unique_ptr<addrinfo, void (*)(addrinfo*)> owner(list, freeaddrinfo);
  for (const addrinfo* address = list; address != nullptr; address = address->ai_next) {
    if (hasRoute(*address)) return true;
  }
  return false;
}

bool OvU_IsNetworkReachable() {
  ifaddrs* interfaces = nullptr;
  if (getifaddrs(&interfaces) != 0) return false;
  const std::unique_ptr<ifaddrs, void (*)(ifaddrs*)> owner(interfaces, freeifaddrs);
  return orvane::isSomeLinkUp(interfaces);
}

bool OvU_DoesOsSupportKeepalives() {
  static std::mutex mutex;
  static std::optional<bool> result;
  const std::scoped_lock lock(mutex);
  if (result) return *result;
  const orvane::FileDescriptor file(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (!file.isOpen()) {
    OvWriteLog(2, "%s: Can't create dummy socket for testing keepalive.", __func__);
    return false;
  }
  result = takesKeepaliveOptions(file.number());
  return *result;
}

namespace orvane {

bool isSomeLinkUp(const ifaddrs* interfaces) {
  for (const ifaddrs* entry = interfaces; entry != nullptr; entry = entry->ifa_next) {
    const unsigned int flags = entry->ifa_flags & (IFF_LOOPBACK | IFF_UP | IFF_RUNNING);
    const int family = entry->ifa_addr != nullptr ? entry->ifa_addr->sa_family : AF_UNSPEC;
    if (flags == (IFF_UP | IFF_RUNNING) && (family == AF_INET || family == AF_INET6)) return true;
  }
  return false;
}

}  // namespace orvane

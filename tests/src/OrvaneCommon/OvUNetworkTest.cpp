#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include "OrvaneCommon/OvUNetwork.h"
#include "Support/ResourceLimit.h"
namespace {

TEST(OvUNetwork, AHostIsReachableByRoute) {
  for (const char* reachable : {"127.0.0.1", "localhost"}) EXPECT_TRUE(OvU_IsHostReachable(reachable)) << reachable;
  // No socket connects to the broadcast address without asking for it.
  for (const char* unreachable : {"255.255.255.255", "", "a..b"}) {
    EXPECT_FALSE(OvU_IsHostReachable(unreachable)) << unreachable;
  }
}

TEST(OvUNetwork, ALinkIsUpIfAnInterfaceBesidesLoopbackRunsWithAnAddress) {
  sockaddr internet{.sa_family = AF_INET, .sa_data = {}};
  sockaddr internet6{.sa_family = AF_INET6, .sa_data = {}};
  sockaddr hardware{.sa_family = AF_PACKET, .sa_data = {}};
  constexpr unsigned int kRunning = IFF_UP | IFF_RUNNING | IFF_BROADCAST;
  const struct {
    unsigned int flags;
    sockaddr* address;
    bool isUp;
  } rows[] = {
      {kRunning, &internet, true}, {kRunning, &internet6, true},    {kRunning | IFF_LOOPBACK, &internet, false},
      {IFF_UP, &internet, false},  {IFF_RUNNING, &internet, false}, {kRunning, &hardware, false},
      {kRunning, nullptr, false},
  };
  for (const auto& row : rows) {
    ifaddrs interface {};
    interface.ifa_flags = row.flags;
    interface.ifa_addr = row.address;
    ifaddrs loopback{};
    loopback.ifa_next = &interface;
    loopback.ifa_flags = kRunning | IFF_LOOPBACK;
    loopback.ifa_addr = &internet;
    EXPECT_EQ(orvane::isSomeLinkUp(&loopback), row.isUp) << row.flags;
  }
}

TEST(OvUNetwork, AShortageOfSocketsIsNotRemembered) {
  {
    const ResourceLimit none(RLIMIT_NOFILE, 0);
    EXPECT_FALSE(OvU_DoesOsSupportKeepalives());
  }
  EXPECT_TRUE(OvU_DoesOsSupportKeepalives());
}

}  // namespace

#pragma once

#include <string>

struct ifaddrs;

/// @file
/// What can be told of the network without sending anything to a peer. Any thread.

/// Whether a host has an address that this machine has a route to. Whether the host is there and answers isn't told: no
/// packet goes to it. Blocks while the name is looked up.
bool OvU_IsHostReachable(const std::string& host);

/// Whether a network interface besides the loopback one is up and running with an address.
bool OvU_IsNetworkReachable();

/// Whether connections can be kept alive with intervals and counts of their own. Found out once for the process; a call
/// that can't open a socket is logged, says no, and leaves it to the next call.
bool OvU_DoesOsSupportKeepalives();

namespace orvane {

/// OvU_IsNetworkReachable for a list of interfaces as getifaddrs() gives it.
bool isSomeLinkUp(const ifaddrs* interfaces);

}  // namespace orvane

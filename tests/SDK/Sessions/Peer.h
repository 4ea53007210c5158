#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <sys/types.h>

#include "Sessions/SessionRegistryNames.h"

/// A process of its own that works on a registry: the program session_peer, which tells what it understands.
class Peer {
 public:
  explicit Peer(const orvane::SessionRegistryNames& names);
  /// Ends the process in good order, unless it is gone already.
  ~Peer();
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;

  void tell(const std::string& command);
  /// The number that the process answers to the oldest command not yet answered; throws if none comes.
  uint32_t answer();
  uint32_t ask(const std::string& command) {
    tell(command);
    return answer();
  }
  /// What an observer in the process was told next, in the order of the calls; throws if none comes.
  std::string event();
  /// Waits until the process has ended; true if a signal ended it.
  bool wasKilled();
  pid_t processId() const { return processId_; }

 private:
  void takeLine();

  pid_t processId_ = -1;
  int toPeer_ = -1;
  int fromPeer_ = -1;
  std::string received_;
  std::vector<std::string> events_;
  std::vector<uint32_t> answers_;
};

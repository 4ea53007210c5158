#pragma once

#include <chrono>

#include "Sessions/SessionEvent.h"
#include "Support/FileDescriptor.h"

namespace orvane {

/// The receiving end of one connection, which brings one event.
class EventConnection {
 public:
  using Clock = std::chrono::steady_clock;
  enum class State { Incomplete, Complete, Failed };

  /// Takes over the socket.
  EventConnection(int socket, Clock::time_point deadline) : socket_(socket), deadline_(deadline) {}

  /// Takes what has come, without waiting. Complete as soon as an event's bytes are there: what follows is not read.
  State receive();

  const OvSESSIONMANAGER_EVENT& event() const { return event_; }
  /// How many bytes have come, or -1 after an error.
  int bytesRead() const { return isBroken_ ? -1 : static_cast<int>(received_); }
  int socket() const { return socket_.number(); }
  /// When to give up waiting for the rest.
  Clock::time_point deadline() const { return deadline_; }

 private:
  FileDescriptor socket_;
  Clock::time_point deadline_;
  OvSESSIONMANAGER_EVENT event_{};
  size_t received_ = 0;
  bool isBroken_ = false;
};

}  // namespace orvane

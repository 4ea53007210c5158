#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "Sessions/EventConnection.h"

namespace orvane {

/// The socket on which a process takes events, and the thread that serves it.
///
/// Connections are served side by side, each with a second for its event, so that one that is slow or silent holds up
/// nobody. Only processes of the same user are heard.
class SessionListener {
 public:
  using Handler = std::function<void(const OvSESSIONMANAGER_EVENT&)>;

  /// `handler` gets each event, on the listener thread, after its connection is closed.
  SessionListener(std::string path, Handler handler);
  /// Waits for the thread, and so for a handler that is at work: not to be run on the listener thread.
  ~SessionListener();
  SessionListener(const SessionListener&) = delete;
  SessionListener& operator=(const SessionListener&) = delete;

  /// Makes the socket (mode 0700), replacing what a dead process left at the path, and starts the thread. False if that
  /// fails, which `function` logs.
  bool start(const char* function);

  /// From now on nobody can connect, and the path is gone. What was sent before is still handled.
  void stop();

  bool isListenerThread() const { return thread_.get_id() == std::this_thread::get_id(); }

 private:
  bool bindToPath();
  void listenerThread();
  bool acceptConnection();
  bool waitForInput() const;
  void serveConnections();

  const std::string path_;
  const Handler handler_;
  int listeningSocket_ = -1;
  std::atomic<bool> isBound_ = false;  // not so before start and after stop
  std::thread thread_;
  // Of the listener thread alone, oldest first.
  std::vector<std::unique_ptr<EventConnection>> connections_;
  bool isShort_ = false;
};

}  // namespace orvane

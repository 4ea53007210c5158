#pragma once

#include <chrono>
#include <string>
#include <vector>

#include <sys/types.h>

/// A program that a test runs as a process of its own, with all that it writes collected.
///
/// No call waits longer than `kPatience`: then it throws std::runtime_error. A process that still runs when the object
/// goes is killed. One thread at a time.
class ChildProcess {
 public:
  static constexpr std::chrono::seconds kPatience{60};

  /// Starts `program`, which finds `input` (at most 64 KiB) at its standard input.
  /// @throws std::runtime_error if it can't be started.
  ChildProcess(const std::string& program, const std::vector<std::string>& arguments, const std::string& input = "");
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// The next line of the standard output with its line feed; less or nothing if the output ends before one comes.
  std::string line();
  /// Sends a signal, and waits for nothing.
  void send(int signal);
  /// Sends `signal` unless it is 0, and waits for the end. @return the exit status, or 128 and the number of the signal
  /// that killed the process.
  int end(int signal = 0);

  /// What has come so far; after end(), all.
  const std::string& output() const { return streams_[0].text; }
  const std::string& errors() const { return streams_[1].text; }

 private:
  using Deadline = std::chrono::steady_clock::time_point;

  struct Stream {
    int descriptor = -1;  // of the pipe's reading end; -1 once the stream has ended
    std::string text{};
  };

  // Waits for more output, or for the end of the process if there can't be more. False if it has ended.
  bool receive(Deadline deadline);

  Stream streams_[2];
  size_t lineStart_ = 0;
  pid_t process_ = 0;
  int processDescriptor_ = -1;
  bool reaped_ = false;
};

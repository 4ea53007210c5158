#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

/// The token of an operation that runs elsewhere: whoever started it may cancel it. A cancelled operation ends at its
/// next look at the token, without a word; what it is blocked in is not interrupted. Any thread.
class PendingTask {
 public:
  /// One that runs.
  static std::shared_ptr<PendingTask> startedTask() {
    auto task = std::make_shared<PendingTask>();
    task->start();
    return task;
  }

  void start() { _status = kRunning; }
  void cancel() { _status = kCancelled; }
  bool isRunning() const { return _status == kRunning; }

 private:
  enum Status : int32_t { kNotStarted = 0, kRunning = 1, kCancelled = 2 };
  std::atomic<int32_t> _status = kNotStarted;
};

#pragma once

#include <functional>
#include <memory>

/// @file
/// Where work runs. All operations may be called on any thread. Work must not throw; what it touches it owns. What it
/// owns goes on the thread that ran it, before that thread takes the next work.

namespace orvane {

using Work = std::function<void()>;

/// Runs work some time after post() returned, never inside it.
class WorkQueue {
 public:
  virtual ~WorkQueue() = default;
  /// `work` must not be empty.
  virtual void post(Work work) = 0;
};

/// Work runs in the order of posting, one piece at a time.
class SerialQueue : public WorkQueue {};

/// Work runs on the main thread, in the order of posting. The only way onto the main thread.
class MainQueue : public WorkQueue {
 public:
  virtual bool isCurrentThread() const = 0;
};

/// Work runs at once or soon, on a thread of its own choosing: never waits for other work of the queue that is blocked.
class GlobalQueue : public WorkQueue {};

/// Makes one queue more. Callable on any thread.
using SerialQueueFactory = std::function<std::shared_ptr<SerialQueue>()>;

}  // namespace orvane

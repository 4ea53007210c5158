#pragma once

#include <functional>
#include <memory>

/// @file
/// Where work runs. All operations may be called on any thread. Work must not throw; what it touches it owns.

namespace orvane {

using Work = std::function<void()>;

/// Runs work some time after post() returned, never inside it.
class WorkQueue {
 public:
  virtual ~WorkQueue() = default;
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

using SerialQueueFactory = std::function<std::shared_ptr<SerialQueue>()>;

/// A serial queue with a thread of its own, which starts with the first work. The queue may be let go at any time, from
/// its own work too: what was posted still runs, unless the process ends first. Nobody waits for it.
std::shared_ptr<SerialQueue> makeSerialQueue();

}  // namespace orvane

#pragma once

#include <chrono>

#include "Platform/Queues.h"

namespace orvane {

/// Runs work at a later time. All operations may be called on any thread.
class Timer {
 public:
  virtual ~Timer() = default;

  /// Runs `work`, which must not be empty, once at least `delay` has passed, never inside the call; a delay of zero or
  /// less is over at once. What is due at the same time runs in the order of the calls.
  ///
  /// There is one thread for all: work that could take long, or belongs to a thread, only posts to a queue. It can't be
  /// called off; what may be gone by then is held weakly. Work must not throw.
  virtual void after(std::chrono::milliseconds delay, Work work) = 0;
};

}  // namespace orvane

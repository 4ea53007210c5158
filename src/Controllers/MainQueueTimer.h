#pragma once

#include <chrono>
#include <memory>

#include "Platform/Queues.h"
#include "Platform/Timer.h"

namespace orvane {

/// A timer that fires on the main thread until it is invalidated or let go. Main thread only.
class MainQueueTimer {
 public:
  /// Neither is null.
  MainQueueTimer(std::shared_ptr<Timer> timer, std::shared_ptr<MainQueue> mainQueue);

  /// Invalidates, then fires once.
  void startOnce(std::chrono::milliseconds delay, Work work);
  /// Invalidates, then fires again and again.
  void startRepeating(std::chrono::milliseconds period, Work work);
  /// Nothing fires any more, not even what is due and queued.
  void invalidate() { run_.reset(); }
  /// Whether something is still to fire.
  bool isValid() const { return run_ != nullptr; }

 private:
  struct Run;
  static void scheduleNext(const std::shared_ptr<Run>& run);
  void start(std::chrono::milliseconds period, bool repeats, Work work);

  const std::shared_ptr<Timer> timer_;
  const std::shared_ptr<MainQueue> mainQueue_;
  std::shared_ptr<Run> run_{};
};

}  // namespace orvane

#pragma once

#include <atomic>
#include <chrono>
#include <thread>

#include "Platform/Queues.h"

namespace orvane {

/// Measures for how long the main loop did nothing for the user: a thread asks it for an answer all the time, and notes
/// how long that took. For developers: it keeps the machine awake.
class MainLoopWatch {
 public:
  explicit MainLoopWatch(std::shared_ptr<MainQueue> mainQueue);
  /// Ends the measurement.
  ~MainLoopWatch();
  MainLoopWatch(const MainLoopWatch&) = delete;
  MainLoopWatch& operator=(const MainLoopWatch&) = delete;

  /// The longest wait for an answer up to now. Any thread.
  std::chrono::milliseconds longestGap() const { return longestGap_.load(); }

 private:
  void measure(const std::stop_token& stop);

  const std::shared_ptr<MainQueue> mainQueue_;
  std::atomic<std::chrono::milliseconds> longestGap_{};
  std::jthread thread_;
};

}  // namespace orvane

#pragma once

#include <chrono>
#include <condition_variable>
#include <list>
#include <mutex>
#include <thread>
#include <utility>

#include "Platform/Queues.h"

/// A queue of any kind whose work runs when the test says so, on the test's thread, which is the one that makes it. Its
/// work may be posted from any thread. Work that was never pumped goes with the queue, unrun.
///
/// One queue may stand for several, so that the test runs the work of all in the order of posting.
class PumpedQueue final : public orvane::SerialQueue, public orvane::MainQueue, public orvane::GlobalQueue {
 public:
  static constexpr std::chrono::seconds kPatience{60};

  void post(orvane::Work work) override {
    const std::lock_guard lock(mutex_);
    works_.push_back(std::move(work));
    workCame_.notify_one();
  }

  bool isCurrentThread() const override { return std::this_thread::get_id() == thread_; }

  /// How much is waiting.
  size_t size() const {
    const std::lock_guard lock(mutex_);
    return works_.size();
  }

  /// Runs the next work. @return whether there was any.
  bool pumpOne() { return runNext(std::chrono::steady_clock::now()); }

  /// Runs what is waiting, and what is posted meanwhile, until nothing is left. @return how much it was.
  size_t pump() {
    size_t count = 0;
    while (pumpOne()) ++count;
    return count;
  }

  /// Runs what is waiting and what comes, until `condition()` holds, which is asked at first and after each work.
  /// @return whether it held within `kPatience`.
  template <typename Condition>
  bool pumpUntil(const Condition& condition) {
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (!condition()) {
      if (std::chrono::steady_clock::now() >= deadline || !runNext(deadline)) return false;
    }
    return true;
  }

 private:
  bool runNext(std::chrono::steady_clock::time_point deadline) {
    std::list<orvane::Work> taken;
    {
      std::unique_lock lock(mutex_);
      if (!workCame_.wait_until(lock, deadline, [this] { return !works_.empty(); })) return false;
      taken.splice(taken.begin(), works_, works_.begin());
    }
    taken.front()();
    return true;
  }

  const std::thread::id thread_ = std::this_thread::get_id();
  mutable std::mutex mutex_;
  std::condition_variable workCame_;
  std::list<orvane::Work> works_{};
};

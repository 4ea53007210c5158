#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

#include "Platform/Queues.h"

namespace orvane::walkthrough {

/// The main thread's queue in a program without a window: its work runs while the thread that made it is in runUntil().
class MainLoop : public MainQueue {
 public:
  void post(Work work) override {
    const std::lock_guard lock(mutex_);
    works_.push_back(std::move(work));
    workCame_.notify_one();
  }

  bool isCurrentThread() const override { return std::this_thread::get_id() == thread_; }

  /// Runs what was posted and what comes until `condition()` holds, which is asked at first and after each work.
  template <class Condition>
  void runUntil(const Condition& condition) {
    while (!condition()) {
      std::unique_lock lock(mutex_);
      workCame_.wait(lock, [this] { return !works_.empty(); });
      const Work work = std::move(works_.front());
      works_.pop_front();
      lock.unlock();
      work();
    }
  }

 private:
  const std::thread::id thread_ = std::this_thread::get_id();
  std::mutex mutex_;
  std::condition_variable workCame_;
  std::deque<Work> works_;
};

}  // namespace orvane::walkthrough

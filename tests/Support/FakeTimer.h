#pragma once

#include <algorithm>
#include <chrono>
#include <map>
#include <mutex>
#include <utility>

#include "Platform/Timer.h"

/// A timer whose time passes when a test says so. Its work runs on the thread that lets the time pass; it may be set on
/// any thread.
class FakeTimer : public orvane::Timer {
 public:
  void after(std::chrono::milliseconds delay, orvane::Work work) override {
    const std::lock_guard lock(mutex_);
    works_.emplace(now_ + std::max(delay, std::chrono::milliseconds(0)), std::move(work));
  }

  /// Runs what comes due meanwhile, each at its time.
  void advance(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    const std::chrono::milliseconds end = now_ + time;
    while (!works_.empty() && works_.begin()->first <= end) {
      auto next = works_.extract(works_.begin());
      now_ = next.key();
      lock.unlock();
      next.mapped()();
      next = {};
      lock.lock();
    }
    now_ = end;
  }

  /// How much is waiting.
  size_t size() const {
    const std::lock_guard lock(mutex_);
    return works_.size();
  }

 private:
  mutable std::mutex mutex_;
  std::chrono::milliseconds now_{0};
  std::multimap<std::chrono::milliseconds, orvane::Work> works_;
};

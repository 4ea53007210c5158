#include "Platform/ThreadTimer.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <map>
#include <mutex>
#include <thread>
#include <utility>

#include <pthread.h>

#include "Support/OvWriteLog.h"

namespace orvane {
namespace {

using Clock = std::chrono::steady_clock;

// The waiting work of a timer, owned by the timer and its thread together.
class WaitingWorks : public std::enable_shared_from_this<WaitingWorks> {
 public:
  void add(Clock::time_point due, Work work);
  // Lets the thread end when nothing waits. Nothing is added any more.
  void close();

 private:
  void run() noexcept;
  // With the mutex locked.
  void startThreadIfNeeded();
  void runFirst(std::unique_lock<std::mutex>& lock);

  std::mutex mutex_;
  std::condition_variable changed_;
  std::multimap<Clock::time_point, Work> works_{};  // equal keys keep the order of adding
  bool hasThread_ = false;
  bool closed_ = false;
};

void WaitingWorks::add(Clock::time_point due, Work work) {
  const std::lock_guard lock(mutex_);
  works_.emplace(due, std::move(work));
  changed_.notify_one();
  startThreadIfNeeded();
}

void WaitingWorks::close() {
  const std::lock_guard lock(mutex_);
  closed_ = true;
  changed_.notify_one();
}

void WaitingWorks::startThreadIfNeeded() {
  if (hasThread_) return;
  try {
    std::thread([self = shared_from_this()] { self->run(); }).detach();
    hasThread_ = true;
  } catch (const std::exception& error) {
    OvWriteLog(2, "%s: can't start a thread (%s)", "WaitingWorks::startThreadIfNeeded", error.what());
  }
}

void WaitingWorks::run() noexcept {
  pthread_setname_np(pthread_self(), "orvane-timer");
  std::unique_lock lock(mutex_);
  while (!works_.empty() || !closed_) {
    if (works_.empty()) {
      changed_.wait(lock);
    } else if (const Clock::time_point due = works_.begin()->first; due > Clock::now()) {
      changed_.wait_until(lock, due);
    } else {
      runFirst(lock);
    }
  }
}

void WaitingWorks::runFirst(std::unique_lock<std::mutex>& lock) {
  auto first = works_.extract(works_.begin());
  lock.unlock();
  first.mapped()();
  first = {};  // unlocked: what the work owned may use this timer as it goes
  lock.lock();
}

class ThreadTimer final : public Timer {
 public:
  ThreadTimer() = default;
  ~ThreadTimer() override { works_->close(); }
  ThreadTimer(const ThreadTimer&) = delete;
  ThreadTimer& operator=(const ThreadTimer&) = delete;

  void after(std::chrono::milliseconds delay, Work work) override {
    const std::shared_ptr<WaitingWorks> works = works_;  // the work may let this timer go before after() has returned
    works->add(Clock::now() + std::clamp(delay, kNow, kLongest), std::move(work));
  }

 private:
  static constexpr std::chrono::milliseconds kNow{0};
  static constexpr std::chrono::milliseconds kLongest = std::chrono::hours(24 * 365);  // no overflow of the clock

  const std::shared_ptr<WaitingWorks> works_ = std::make_shared<WaitingWorks>();
};

}  // namespace

std::shared_ptr<Timer> makeTimer() { return std::make_shared<ThreadTimer>(); }

}  // namespace orvane

#include "Platform/ThreadQueues.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <list>
#include <mutex>
#include <thread>
#include <utility>

#include <pthread.h>

#include "Support/OvWriteLog.h"

namespace orvane {
namespace {

constexpr std::chrono::seconds kIdleTime{10};

// The waiting work of a queue and the threads that run it. The queue and each thread own it together, so it is there
// for whichever of them goes last.
class Workers : public std::enable_shared_from_this<Workers> {
 public:
  Workers(const char* threadName, size_t threadLimit) : threadName_(threadName), threadLimit_(threadLimit) {}

  void post(Work work);
  // Lets idle threads end at once. Nothing is posted any more.
  void close();

 private:
  void run() noexcept;
  void takeWork(std::unique_lock<std::mutex>& lock);
  // With the mutex locked: starts a thread if there is more work than threads that will look for some.
  void startThreadIfNeeded();

  const char* const threadName_;
  const size_t threadLimit_;

  std::mutex mutex_;
  std::condition_variable workCame_;
  std::list<Work> works_{};  // a list takes no memory as long as it is empty, and hands over its nodes
  size_t threads_ = 0;
  size_t lookingThreads_ = 0;  // those of them that are idle or just starting
  bool closed_ = false;
};

void Workers::post(Work work) {
  std::list<Work> posted;
  posted.push_back(std::move(work));
  const std::lock_guard lock(mutex_);
  works_.splice(works_.end(), posted);
  workCame_.notify_one();
  startThreadIfNeeded();
}

void Workers::close() {
  const std::lock_guard lock(mutex_);
  closed_ = true;
  workCame_.notify_all();
}

void Workers::startThreadIfNeeded() {
  if (works_.size() <= lookingThreads_ || threads_ == threadLimit_) return;
  try {
    std::thread([self = shared_from_this()] { self->run(); }).detach();
  } catch (const std::exception& error) {
    OvWriteLog(2, "%s: can't start a thread for \"%s\" (%s)", "Workers::startThreadIfNeeded", threadName_,
               error.what());
    return;
  }
  ++threads_;
  ++lookingThreads_;
}

void Workers::run() noexcept {
  pthread_setname_np(pthread_self(), threadName_);
  std::unique_lock lock(mutex_);
  while (workCame_.wait_for(lock, kIdleTime, [this] { return !works_.empty() || closed_; }) && !works_.empty()) {
    takeWork(lock);
  }
  --lookingThreads_;
  --threads_;
}

void Workers::takeWork(std::unique_lock<std::mutex>& lock) {
  std::list<Work> taken;
  taken.splice(taken.begin(), works_, works_.begin());
  --lookingThreads_;
  startThreadIfNeeded();  // the system may have refused one when this was posted
  lock.unlock();
  taken.front()();
  taken.clear();  // unlocked: what the work owned may use this queue as it goes
  lock.lock();
  ++lookingThreads_;
}

template <typename Queue>
class ThreadQueue final : public Queue {
 public:
  ThreadQueue(const char* threadName, size_t threadLimit)
      : workers_(std::make_shared<Workers>(threadName, threadLimit)) {}
  ~ThreadQueue() override { workers_->close(); }
  ThreadQueue(const ThreadQueue&) = delete;
  ThreadQueue& operator=(const ThreadQueue&) = delete;

  void post(Work work) override {
    const std::shared_ptr<Workers> workers = workers_;  // the work may let this queue go before post() has returned
    workers->post(std::move(work));
  }

 private:
  const std::shared_ptr<Workers> workers_;
};

}  // namespace

std::shared_ptr<SerialQueue> makeSerialQueue() {
  return std::make_shared<ThreadQueue<SerialQueue>>("orvane-serial", 1);
}

std::shared_ptr<GlobalQueue> makeGlobalQueue() {
  return std::make_shared<ThreadQueue<GlobalQueue>>("orvane-global", SIZE_MAX);
}

}  // namespace orvane

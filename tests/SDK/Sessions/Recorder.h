#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <latch>
#include <mutex>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "Sessions/OvSessionManager.h"
#include "Sessions/OvSessionManagerObserver.h"
#include "Sessions/OvSessionObserver.h"

/// Keeps what it is told, a line for each call, for a thread that waits for it.
class Recorder : public OvSessionManagerObserver, public OvSessionObserver {
 public:
  void sessionAdded(uint32_t id) override { keep("added", id); }
  void sessionRemoved(uint32_t id) override { keep("removed", id); }
  void logoffSession(uint32_t id) override { keep("logoff", id); }
  void disconnectSession(uint32_t id) override { keep("disconnect", id); }
  void activateSessionView(uint32_t id) override { keep("activate", id); }
  void startApplication(uint32_t id, const char* program, const char* workingDir) override {
    keep("start", id, std::string(" ") + program + " in " + workingDir);
  }

  /// The next line; empty if none comes within a time that only a failure takes.
  std::string next() {
    std::unique_lock lock(mutex_);
    if (!came_.wait_for(lock, std::chrono::seconds(30), [this] { return !lines_.empty(); })) return {};
    std::string line = lines_.front();
    lines_.pop_front();
    return line;
  }
  bool isEmpty() {
    const std::scoped_lock lock(mutex_);
    return lines_.empty();
  }

 private:
  void keep(const char* what, uint32_t id, const std::string& more = {}) {
    const std::scoped_lock lock(mutex_);
    lines_.push_back(what + (" " + std::to_string(id)) + more);
    came_.notify_all();
  }

  std::mutex mutex_;
  std::condition_variable came_;
  std::deque<std::string> lines_;
};

/// Stays in its call until it may go, and then wants to find a manager that it makes there working, one session in the
/// registry, and its own manager not gone.
struct SlowObserver : OvSessionManagerObserver {
  void sessionAdded(uint32_t) override {
    isIn.count_down();
    mayGo.wait();
    for (int turn = 0; turn < 2000; ++turn) std::this_thread::yield();
    EXPECT_EQ(OvSessionManager().getSessionList().size(), 1u);
    EXPECT_FALSE(isGone) << "the manager's destructor has not waited";
  }
  void sessionRemoved(uint32_t) override {}

  std::latch isIn{1}, mayGo{1};
  std::atomic<bool> isGone = false;
};

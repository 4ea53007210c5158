#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include <semaphore.h>

namespace orvane {

/// The lock that the processes of a registry share by name: one of them at a time has its turn.
///
/// A process that is killed within its turn never ends it, so waiting has a bound. Any thread may use an open one.
class NamedSemaphore {
 public:
  /// How long a turn is waited for. Turns last microseconds: whoever waits so long waits for a dead process. It is not
  /// waited for again, only asked for, until it has been had again.
  static constexpr int kPatienceSeconds = 3;

  NamedSemaphore() = default;
  ~NamedSemaphore();
  NamedSemaphore(const NamedSemaphore&) = delete;
  NamedSemaphore& operator=(const NamedSemaphore&) = delete;

  /// Opens the semaphore, creating it with mode 0644 and no turn taken if there is none. The name stays when the object
  /// goes: while one process has it open, the next one would make a second semaphore for the same memory.
  /// @return false, with the reason in errno (EACCES if it belongs to another user).
  bool open(const std::string& name);

  /// Waits for the turn. False, with the reason in errno, if it doesn't come.
  bool take();
  void give();

 private:
  sem_t* semaphore_ = nullptr;
  std::atomic<bool> isStuck_ = false;
  std::atomic<uint32_t> turns_ = 0;
};

/// One turn, ended with the scope; false if it was not to be had.
class SemaphoreTurn {
 public:
  explicit SemaphoreTurn(NamedSemaphore& semaphore) : semaphore_(semaphore), isTaken_(semaphore.take()) {}
  ~SemaphoreTurn() {
    if (isTaken_) semaphore_.give();
  }
  SemaphoreTurn(const SemaphoreTurn&) = delete;
  SemaphoreTurn& operator=(const SemaphoreTurn&) = delete;

  explicit operator bool() const { return isTaken_; }

 private:
  NamedSemaphore& semaphore_;
  const bool isTaken_;
};

}  // namespace orvane

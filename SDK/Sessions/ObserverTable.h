#pragma once

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace orvane {

/// Observers that any thread may add, remove and call at any time, without a lock being held across a call.
///
/// Who removes an observer waits until every call of it that another thread is in has returned, so that it may be
/// destroyed right after. A thread doesn't wait for the calls that it is in itself: an observer may remove itself.
/// Two observers that remove each other at the same moment on two threads therefore wait for ever.
template <typename Observer>
class ObserverTable {
 public:
  /// Handles count upwards from `firstHandle`; 0 is never one.
  explicit ObserverTable(uint32_t firstHandle = 1) : nextHandle_(std::max(firstHandle, 1u)) {}

  /// The observer's handle, which no other entry has had. The same observer may be added again.
  uint32_t add(Observer* observer) {
    const std::scoped_lock lock(mutex_);
    const uint32_t handle = nextHandle_++;
    if (nextHandle_ == 0) nextHandle_ = 1;
    entries_.push_back({handle, observer});
    return handle;
  }

  /// Removes the entry with this handle, if there is one.
  void remove(uint32_t handle) {
    removeIf([handle](const Entry& entry) { return entry.handle == handle; });
  }

  /// Removes every entry of this observer.
  void removeAll(const Observer* observer) {
    removeIf([observer](const Entry& entry) { return entry.observer == observer; });
  }

  /// Runs `use` on the observer with this handle; false if there is none.
  template <typename Use>
  bool call(uint32_t handle, Use use) {
    std::unique_lock lock(mutex_);
    const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                    [handle](const Entry& candidate) { return candidate.handle == handle; });
    if (entry == entries_.end()) return false;
    callUnlocked(lock, *entry, use);
    return true;
  }

  /// Runs `use` on every observer, in the order of their adding. One that is removed meanwhile and not yet reached is
  /// left out; so are those that are added meanwhile.
  template <typename Use>
  void callEach(Use use) {
    std::unique_lock lock(mutex_);
    std::vector<uint32_t> handles;
    for (const Entry& entry : entries_) handles.push_back(entry.handle);
    lock.unlock();
    for (const uint32_t handle : handles) call(handle, use);
  }

 private:
  struct Entry {
    uint32_t handle;
    Observer* observer;
  };
  struct Call {
    Entry entry;
    std::thread::id thread;
  };

  template <typename Use>
  void callUnlocked(std::unique_lock<std::mutex>& lock, Entry entry, Use& use) {
    calls_.push_back({entry, std::this_thread::get_id()});
    lock.unlock();
    use(*entry.observer);
    lock.lock();
    calls_.erase(std::find_if(calls_.begin(), calls_.end(), [entry](const Call& call) {
      return call.entry.handle == entry.handle && call.thread == std::this_thread::get_id();
    }));
    callEnded_.notify_all();
  }

  template <typename Matches>
  void removeIf(Matches matches) {
    std::unique_lock lock(mutex_);
    std::erase_if(entries_, matches);
    callEnded_.wait(lock, [this, &matches] {
      return std::none_of(calls_.begin(), calls_.end(), [&matches](const Call& call) {
        return matches(call.entry) && call.thread != std::this_thread::get_id();
      });
    });
  }

  std::mutex mutex_;
  std::condition_variable callEnded_;
  uint32_t nextHandle_;
  std::vector<Entry> entries_;
  std::vector<Call> calls_;  // those that run now, on whichever thread
};

}  // namespace orvane

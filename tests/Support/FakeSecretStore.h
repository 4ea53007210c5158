#pragma once

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "Platform/SecretStore.h"

/// A secret store in memory that counts its calls and fails, or keeps its callers waiting, when a test says so.
/// All operations may be called on any thread.
class FakeSecretStore : public orvane::SecretStore {
 public:
  using Bytes = std::vector<uint8_t>;
  static constexpr std::chrono::seconds kPatience{30};

  Item load(const std::string& service, const std::string& account) override {
    std::unique_lock lock(mutex_);
    ++loads_;
    passGate(lock);
    if (isUnreadable_) return {Reading::kUnreadable};
    const auto found = items_.find({service, account});
    return found == items_.end() ? Item{Reading::kAbsent} : Item{Reading::kFound, found->second};
  }

  bool save(const std::string& service, const std::string& account, std::span<const uint8_t> bytes) override {
    std::unique_lock lock(mutex_);
    ++saves_;
    passGate(lock);
    if (isUnreadable_ || refusesSaves_) return false;
    items_[{service, account}].assign(bytes.begin(), bytes.end());
    return true;
  }

  /// Puts an item in from outside.
  void put(const std::string& account, Bytes bytes, const std::string& service = "Orvane") {
    const std::lock_guard lock(mutex_);
    items_[{service, account}] = std::move(bytes);
  }
  /// What lies in the store, read from outside.
  std::optional<Bytes> stored(const std::string& account, const std::string& service = "Orvane") const {
    const std::lock_guard lock(mutex_);
    const auto found = items_.find({service, account});
    return found == items_.end() ? std::nullopt : std::optional(found->second);
  }

  /// While set, every load is unreadable and every save fails, as with a locked store.
  void setUnreadable(bool isUnreadable) {
    const std::lock_guard lock(mutex_);
    isUnreadable_ = isUnreadable;
  }
  /// While set, every save fails.
  void setRefusesSaves(bool refusesSaves) {
    const std::lock_guard lock(mutex_);
    refusesSaves_ = refusesSaves;
  }

  /// Keeps all calls from now on waiting until release().
  void block() {
    const std::lock_guard lock(mutex_);
    isBlocked_ = true;
  }
  void release() {
    const std::lock_guard lock(mutex_);
    isBlocked_ = false;
    changed_.notify_all();
  }
  /// Waits until `count` calls wait. @throws std::runtime_error if they don't come.
  void awaitBlockedCalls(int count = 1) {
    std::unique_lock lock(mutex_);
    if (!changed_.wait_for(lock, kPatience, [&] { return waiting_ >= count; })) {
      throw std::runtime_error("nobody asked the secret store");
    }
  }

  int loads() const {
    const std::lock_guard lock(mutex_);
    return loads_;
  }
  int saves() const {
    const std::lock_guard lock(mutex_);
    return saves_;
  }

 private:
  void passGate(std::unique_lock<std::mutex>& lock) {
    ++waiting_;
    changed_.notify_all();
    changed_.wait(lock, [&] { return !isBlocked_; });
    --waiting_;
  }

  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::map<std::pair<std::string, std::string>, Bytes> items_;
  bool isUnreadable_ = false;
  bool refusesSaves_ = false;
  bool isBlocked_ = false;
  int waiting_ = 0;
  int loads_ = 0;
  int saves_ = 0;
};

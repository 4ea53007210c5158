#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Platform/Opener.h"

/// An opener that only writes down what it is asked for, in order: "open ADDRESS" and "mount ADDRESS". Any thread.
class FakeOpener : public orvane::Opener {
 public:
  bool openAddress(const std::string& address) override { return record("open " + address); }
  bool mountShare(const std::string& address) override { return record("mount " + address); }
  std::optional<std::string> mountedPath(const std::string& networkFolder) override {
    const std::lock_guard lock(mutex_);
    const auto found = mounts_.find(networkFolder);
    return found == mounts_.end() ? std::nullopt : std::optional(found->second);
  }

  /// From now on the folder of the network appears at `path`.
  void mount(const std::string& networkFolder, std::string path) {
    const std::lock_guard lock(mutex_);
    mounts_[networkFolder] = std::move(path);
  }
  /// What was asked for since the last call.
  std::vector<std::string> takeActions() {
    const std::lock_guard lock(mutex_);
    return std::exchange(actions_, {});
  }

 private:
  bool record(std::string action) {
    const std::lock_guard lock(mutex_);
    actions_.push_back(std::move(action));
    return true;
  }

  std::mutex mutex_;
  std::map<std::string, std::string> mounts_;
  std::vector<std::string> actions_;
};

#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "FarmDescription.h"

namespace orvane::demo {

/// The faults in force, each with its count of the requests that it fitted. Any thread.
class FaultList {
 public:
  explicit FaultList(const std::vector<Fault>& faults);

  void add(Fault fault);
  void clear();
  /// The fault that acts on this request, which every fitting fault counts. `message` is empty for a plain GET; `path`
  /// begins with "/".
  std::optional<Fault> next(const std::string& message, const std::string& path);

 private:
  struct Entry {
    Fault fault;
    int seen = 0;
  };
  std::mutex mutex_;
  std::vector<Entry> entries_;
};

}  // namespace orvane::demo

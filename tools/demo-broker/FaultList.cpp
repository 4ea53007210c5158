#include "FaultList.h"

namespace orvane::demo {

FaultList::FaultList(const std::vector<Fault>& faults) {
  for (const Fault& fault : faults) add(fault);
}

void FaultList::add(Fault fault) {
  const std::lock_guard lock(mutex_);
  entries_.push_back({std::move(fault)});
}

void FaultList::clear() {
  const std::lock_guard lock(mutex_);
  entries_.clear();
}

std::optional<Fault> FaultList::next(const std::string& message, const std::string& path) {
  const std::lock_guard lock(mutex_);
  std::optional<Fault> acting;
  for (auto& [fault, seen] : entries_) {
    const bool fits = fault.request.empty() || fault.request == (fault.request.front() == '/' ? path : message);
    if (!fits) continue;
    ++seen;
    const bool active = seen >= fault.nth && (fault.times == 0 || seen < fault.nth + fault.times);
    if (active && !acting) acting = fault;
  }
  return acting;
}

}  // namespace orvane::demo

#pragma once

#include <csignal>

#include <sys/resource.h>

/// Holds this process to so much of a resource while it lives. RLIMIT_FSIZE, a file's size in bytes, stands in for a
/// full disk: a write fails in the middle.
class ResourceLimit {
 public:
  ResourceLimit(decltype(RLIMIT_FSIZE) resource, rlim_t limit) : resource_(resource) {
    getrlimit(resource, &usual_);
    const rlimit small{limit, usual_.rlim_max};
    setrlimit(resource, &small);
  }
  ~ResourceLimit() {
    setrlimit(resource_, &usual_);
    signal(SIGXFSZ, handler_);
  }
  ResourceLimit(const ResourceLimit&) = delete;
  ResourceLimit& operator=(const ResourceLimit&) = delete;

 private:
  const decltype(RLIMIT_FSIZE) resource_;
  const sighandler_t handler_ = signal(SIGXFSZ, SIG_IGN);
  rlimit usual_{};
};

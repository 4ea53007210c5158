#pragma once

#include <atomic>
#include <iostream>

#include "Platform/Opener.h"
#include "PrintableText.h"

namespace orvane::walkthrough {

/// Prints what a desktop would open.
class ShownOpener : public Opener {
 public:
  /// How much there was to open.
  int opened() const { return opened_; }

  bool openAddress(const std::string& address) override {
    std::cout << "It would open " << printable(address) << " on this computer.\n" << std::flush;
    ++opened_;
    return true;
  }
  bool mountShare(const std::string& address) override {
    std::cout << "It would mount " << printable(address) << ", and open a file there.\n" << std::flush;
    ++opened_;
    return true;
  }
  std::optional<std::string> mountedPath(const std::string&) override { return std::nullopt; }

 private:
  std::atomic<int> opened_ = 0;
};

}  // namespace orvane::walkthrough

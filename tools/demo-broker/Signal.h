#pragma once

namespace orvane::demo {

/// Something that happens once and that any number of threads can poll for. Any thread.
class Signal {
 public:
  /// Throws std::system_error if the system has no descriptor left.
  Signal();
  ~Signal();
  Signal(const Signal&) = delete;
  Signal& operator=(const Signal&) = delete;

  void raise();
  bool isRaised() const;
  /// Readable from raise() on; nobody may read it.
  int descriptor() const { return descriptor_; }

 private:
  int descriptor_;
};

}  // namespace orvane::demo

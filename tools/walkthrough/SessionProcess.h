#pragma once

#include <string>

#include <sys/types.h>

namespace orvane::walkthrough {

/// A session program that runs with this process's output. It is told to end when the object goes.
class SessionProcess {
 public:
  /// Starts `program --ovl launchFile`. @throws Failure if it can't be started.
  SessionProcess(const std::string& program, const std::string& launchFile);
  ~SessionProcess();
  SessionProcess(const SessionProcess&) = delete;
  SessionProcess& operator=(const SessionProcess&) = delete;

  /// Becomes readable when the process ends.
  int descriptor() const { return descriptor_; }
  /// Waits for the end. @throws Failure if it was killed or ended with another status than 0.
  void waitForEnd();

 private:
  pid_t process_ = 0;
  int descriptor_ = -1;
};

}  // namespace orvane::walkthrough

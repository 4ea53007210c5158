#pragma once

#include <memory>
#include <string>

#include "Support/ChildProcess.h"
#include "Support/TemporaryFolder.h"

/// A session bus of a test's own, which this process and its children find in the environment. It ends with the object,
/// and with the test's process.
class SessionBusOfTest {
 public:
  /// @throws std::runtime_error if it can't be started.
  SessionBusOfTest();

  const std::string& address() const { return address_; }
  /// Has the bus start this command, in the syntax of service files, when somebody calls the name that nobody has.
  void addService(const std::string& name, const std::string& command);
  void kill();

 private:
  TemporaryFolder folder_;
  std::unique_ptr<ChildProcess> bus_;
  std::string address_;
};

#pragma once

#include <functional>
#include <memory>

#include "Platform/ProcessStarter.h"
#include "Platform/Queues.h"

namespace orvane {

/// Starts programs as processes of this system.
///
/// A program gets this process's environment and user, and else starts afresh: a session of its own, so that an
/// interrupt at the connector's terminal doesn't reach it; no signal ignored or blocked; no open files but the null
/// device as its standard input, output and error. It can write as much as it likes without ever being held up.
///
/// One thread of the queue waits for each program that runs, and for no other child of this process.
class PosixProcessStarter final : public ProcessStarter {
 public:
  /// `succeeded`: the program ended by itself, with status 0.
  using Ended = std::function<void(bool succeeded)>;

  explicit PosixProcessStarter(std::shared_ptr<GlobalQueue> queue) : queue_(std::move(queue)) {}

  bool start(const std::string& executable, const std::vector<std::string>& arguments,
             const std::string& workingDirectory) override;

  /// The same, and `ended` is called on a thread of the queue once the program has ended. Never if it didn't start.
  bool start(const std::string& executable, const std::vector<std::string>& arguments,
             const std::string& workingDirectory, Ended ended);

 private:
  const std::shared_ptr<GlobalQueue> queue_;
};

}  // namespace orvane

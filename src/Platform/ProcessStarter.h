#pragma once

#include <string>
#include <vector>

namespace orvane {

/// Starts programs that live on their own: nobody waits for them, they outlive the connector, and once ended they leave
/// nothing behind.
///
/// All calls may be made on any thread. None waits for the program.
class ProcessStarter {
 public:
  virtual ~ProcessStarter() = default;

  /// Starts `executable` with exactly these arguments; no shell sees them. An executable without a "/" is looked for in
  /// the PATH of this process. An empty working folder stands for that of this process.
  /// @return false, with a line in the log, if the program can't be started. What becomes of a program that was started
  ///         is not told.
  virtual bool start(const std::string& executable, const std::vector<std::string>& arguments,
                     const std::string& workingDirectory) = 0;
};

}  // namespace orvane

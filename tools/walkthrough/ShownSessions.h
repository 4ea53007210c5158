#pragma once

#include <atomic>
#include <list>
#include <optional>
#include <string>
#include <vector>

#include "Platform/ProcessStarter.h"
#include "SessionProcess.h"
#include "Sessions/OvSessionManager.h"
#include "Sessions/OvSessionManagerObserver.h"
#include "Support/FileDescriptor.h"

namespace orvane::walkthrough {

/// Starts session programs with this program's own output, and lets others go on only when the new session is known to
/// the machine, so that the next launch can find it.
class ShownSessions : public ProcessStarter, private OvSessionManagerObserver {
 public:
  ShownSessions();

  bool start(const std::string& executable, const std::vector<std::string>& arguments,
             const std::string& workingDirectory) override;

  /// How many programs were started, or couldn't be.
  int starts() const { return starts_; }
  /// Why the last start came to nothing; empty if it came to a session.
  const std::string& problem() const { return problem_; }

  /// Has the sessions of these programs disconnect, and waits for the programs' end. @throws Failure if one ends badly.
  void end();
  /// Tells whatever still runs to end, and leaves the machine's registry. To be called before the program ends, which
  /// waits for no thread that might still hold this object. Nothing can be started after that.
  void close();

 private:
  struct Started {
    explicit Started(const std::string& program, const std::string& launchFile) : process(program, launchFile) {}
    SessionProcess process;
    uint32_t id = 0;  // of its session; 0 if it makes none
  };

  void sessionAdded(uint32_t sessionId) override;
  void sessionRemoved(uint32_t) override {}
  // The id of the session that the process makes, or 0 if it ends or takes too long.
  uint32_t awaitSession(const SessionProcess& process);

  std::atomic<int> starts_ = 0;
  std::string problem_;
  std::list<Started> started_;
  const FileDescriptor added_;  // an event, raised when a session comes
  std::atomic<uint32_t> lastAdded_ = 0;
  std::optional<OvSessionManager> manager_;
};

}  // namespace orvane::walkthrough

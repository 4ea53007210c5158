#include "Platform/Linux/PosixProcessStarter.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Support/OvWriteLog.h"

namespace orvane {
namespace {

constexpr const char* kNullDevice = "/dev/null";

// What a program finds at its start. The first failure in putting it together stays; errors are those of errno.
class SpawnPlan {
 public:
  explicit SpawnPlan(const std::string& workingDirectory) {
    posix_spawnattr_init(&attributes_);
    posix_spawn_file_actions_init(&actions_);
    sigset_t all, none;
    sigfillset(&all);
    sigemptyset(&none);
    // What this process ignores would stay ignored in the program.
    check(posix_spawnattr_setsigdefault(&attributes_, &all));
    check(posix_spawnattr_setsigmask(&attributes_, &none));
    check(posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSID));
    check(posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, kNullDevice, O_RDONLY, 0));
    check(posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, kNullDevice, O_WRONLY, 0));
    check(posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, kNullDevice, O_WRONLY, 0));
    check(posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1));
    if (!workingDirectory.empty()) {
      check(posix_spawn_file_actions_addchdir_np(&actions_, workingDirectory.c_str()));
    }
  }
  ~SpawnPlan() {
    posix_spawn_file_actions_destroy(&actions_);
    posix_spawnattr_destroy(&attributes_);
  }
  SpawnPlan(const SpawnPlan&) = delete;
  SpawnPlan& operator=(const SpawnPlan&) = delete;

  // 0, or why there is no such process.
  int start(const std::string& executable, const std::vector<std::string>& arguments, pid_t& process) const {
    if (error_ != 0) return error_;
    std::vector<char*> pointers{const_cast<char*>(executable.c_str())};  // posix_spawn doesn't write to them
    for (const std::string& argument : arguments) pointers.push_back(const_cast<char*>(argument.c_str()));
    pointers.push_back(nullptr);
    return posix_spawnp(&process, executable.c_str(), &actions_, &attributes_, pointers.data(), environ);
  }

 private:
  void check(int error) {
    if (error_ == 0) error_ = error;
  }

  posix_spawnattr_t attributes_;
  posix_spawn_file_actions_t actions_;
  int error_ = 0;
};

// Whether the program ended well. No answer can be had in a process that lets the system clear its children away.
bool waitForEnd(pid_t process) {
  int status = 0;
  pid_t ended;
  do {
    ended = waitpid(process, &status, 0);
  } while (ended < 0 && errno == EINTR);
  return ended == process && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

bool isCut(const std::string& text) { return text.find('\0') != std::string::npos; }

}  // namespace

bool PosixProcessStarter::start(const std::string& executable, const std::vector<std::string>& arguments,
                                const std::string& workingDirectory) {
  return start(executable, arguments, workingDirectory, nullptr);
}

bool PosixProcessStarter::start(const std::string& executable, const std::vector<std::string>& arguments,
                                const std::string& workingDirectory, Ended ended) {
  pid_t process = 0;
  // A zero byte would make another text of it.
  const bool cut = isCut(executable) || isCut(workingDirectory) || std::ranges::any_of(arguments, isCut);
  const int error = cut ? EINVAL : SpawnPlan(workingDirectory).start(executable, arguments, process);
  if (error != 0) {
    OvWriteLog(2, "%s: can't start \"%s\" in \"%s\" (%s)", "PosixProcessStarter::start", executable.c_str(),
               workingDirectory.c_str(), std::generic_category().message(error).c_str());
    return false;
  }
  queue_->post([executable, process, ended = std::move(ended)] {
    const bool succeeded = waitForEnd(process);
    if (!succeeded) OvWriteLog(4, "%s: \"%s\" has failed", "PosixProcessStarter::start", executable.c_str());
    if (ended) ended(succeeded);
  });
  return true;
}

}  // namespace orvane

#include "SessionProcess.h"

#include <cerrno>
#include <csignal>
#include <cstring>

#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Failure.h"

namespace orvane::walkthrough {

SessionProcess::SessionProcess(const std::string& program, const std::string& launchFile) {
  // posix_spawn takes its arguments as char*, and leaves them alone.
  char* const arguments[] = {const_cast<char*>(program.c_str()), const_cast<char*>("--ovl"),
                             const_cast<char*>(launchFile.c_str()), nullptr};
  const int error = posix_spawn(&process_, program.c_str(), nullptr, nullptr, arguments, environ);
  if (error != 0) throw Failure("The session program " + program + " can't be started: " + strerror(error) + ".");
  descriptor_ = static_cast<int>(syscall(SYS_pidfd_open, process_, 0));
}

SessionProcess::~SessionProcess() {
  if (process_ > 0) {
    kill(process_, SIGTERM);
    while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
    }
  }
  if (descriptor_ >= 0) close(descriptor_);
}

void SessionProcess::waitForEnd() {
  int status = 0;
  while (waitpid(process_, &status, 0) < 0) {
    if (errno != EINTR) throw Failure("The session program was lost: " + std::string(strerror(errno)) + ".");
  }
  process_ = 0;
  if (WIFSIGNALED(status))
    throw Failure("The session program was killed by signal " + std::to_string(WTERMSIG(status)) + ".");
  if (WEXITSTATUS(status) != 0)
    throw Failure("The session program ended with status " + std::to_string(WEXITSTATUS(status)) + ".");
}

}  // namespace orvane::walkthrough

#include "SessionProgram.h"

#include <cerrno>
#include <cstring>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Explanation.h"

namespace orvane::walkthrough {

int runSessionProgram(const std::string& program, const std::string& launchFile) {
  // posix_spawn takes its arguments as char*, and leaves them alone.
  char* const arguments[] = {const_cast<char*>(program.c_str()), const_cast<char*>("--ovl"),
                             const_cast<char*>(launchFile.c_str()), nullptr};
  pid_t process = 0;
  const int error = posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments, environ);
  if (error != 0) throw Failure("The session program " + program + " can't be started: " + strerror(error) + ".");
  int status = 0;
  while (waitpid(process, &status, 0) < 0) {
    if (errno != EINTR) throw Failure("The session program was lost: " + std::string(strerror(errno)) + ".");
  }
  if (!WIFEXITED(status))
    throw Failure("The session program was killed by signal " + std::to_string(WTERMSIG(status)) + ".");
  return WEXITSTATUS(status);
}

}  // namespace orvane::walkthrough

#include "Support/ChildProcess.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct Pipe {
  Pipe() {
    int ends[2];
    // Closed on exec, so that no other process holds an end open.
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::system_error(errno, std::generic_category(), "pipe2");
    reading = ends[0];
    writing = ends[1];
  }
  int reading;
  int writing;
};

}  // namespace

ChildProcess::ChildProcess(const std::string& program, const std::vector<std::string>& arguments,
                           const std::string& input) {
  const Pipe in, out, errors;
  streams_[0].descriptor = out.reading;
  streams_[1].descriptor = errors.reading;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, in.reading, STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, out.writing, STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, errors.writing, STDERR_FILENO);

  // Before the process starts: the pipe holds it, and a process that ends unread can't break it.
  const bool given = write(in.writing, input.data(), input.size()) == std::ssize(input);
  std::vector<std::string> texts = arguments;
  texts.insert(texts.begin(), program);
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  const int error =
      given ? posix_spawn(&process_, program.c_str(), &actions, nullptr, pointers.data(), environ) : EPIPE;
  posix_spawn_file_actions_destroy(&actions);
  for (const int end : {in.reading, in.writing, out.writing, errors.writing}) close(end);
  if (error != 0) throw std::system_error(error, std::generic_category(), program);
  processDescriptor_ = static_cast<int>(syscall(SYS_pidfd_open, process_, 0));
}

ChildProcess::~ChildProcess() {
  if (!reaped_) {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  for (const int descriptor : {streams_[0].descriptor, streams_[1].descriptor, processDescriptor_}) {
    if (descriptor >= 0) close(descriptor);
  }
}

std::string ChildProcess::line() {
  const Deadline deadline = std::chrono::steady_clock::now() + kPatience;
  const std::string& text = streams_[0].text;
  while (text.find('\n', lineStart_) == std::string::npos && streams_[0].descriptor >= 0) receive(deadline);
  const size_t feed = text.find('\n', lineStart_);
  const size_t start = lineStart_;
  lineStart_ = feed == std::string::npos ? text.size() : feed + 1;
  return text.substr(start, lineStart_ - start);
}

void ChildProcess::send(int signal) { kill(process_, signal); }

int ChildProcess::end(int signal) {
  const Deadline deadline = std::chrono::steady_clock::now() + kPatience;
  if (signal != 0) send(signal);
  while (receive(deadline)) {
  }
  int status = 0;
  waitpid(process_, &status, 0);
  reaped_ = true;
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

bool ChildProcess::receive(Deadline deadline) {
  const bool silent = streams_[0].descriptor < 0 && streams_[1].descriptor < 0;
  // poll passes over negative descriptors.
  pollfd entries[] = {{streams_[0].descriptor, POLLIN, 0},
                      {streams_[1].descriptor, POLLIN, 0},
                      {silent ? processDescriptor_ : -1, POLLIN, 0}};
  using std::chrono::milliseconds;
  const auto left = std::chrono::duration_cast<milliseconds>(deadline - std::chrono::steady_clock::now());
  const int ready = poll(entries, std::size(entries), static_cast<int>(std::max(left, milliseconds(0)).count()));
  if (ready == 0) throw std::runtime_error("a process hangs; it said: " + output() + errors());
  for (size_t i = 0; i < std::size(streams_); ++i) {
    if (entries[i].revents == 0) continue;
    char bytes[4096];
    const ssize_t count = read(streams_[i].descriptor, bytes, sizeof bytes);
    if (count > 0) {
      streams_[i].text.append(bytes, static_cast<size_t>(count));
    } else {
      close(streams_[i].descriptor);
      streams_[i].descriptor = -1;
    }
  }
  return entries[2].revents == 0;
}

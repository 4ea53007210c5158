#include "Peer.h"

#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kPatienceMilliseconds = 60000;  // an answer that takes longer is taken for none

template <typename Item>
Item takeFirst(std::vector<Item>& items) {
  Item first = items.front();
  items.erase(items.begin());
  return first;
}

}  // namespace

Peer::Peer(const orvane::SessionRegistryNames& names) {
  int commands[2], answers[2];
  if (pipe2(commands, O_CLOEXEC) != 0 || pipe2(answers, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, commands[0], 0);
  posix_spawn_file_actions_adddup2(&actions, answers[1], 1);
  std::string program = ORVANE_SESSION_PEER;
  std::string arguments[] = {names.semaphore, names.sharedMemory, names.socketPrefix};
  char* const vector[] = {program.data(), arguments[0].data(), arguments[1].data(), arguments[2].data(), nullptr};
  const int result = posix_spawn(&processId_, program.c_str(), &actions, nullptr, vector, environ);
  posix_spawn_file_actions_destroy(&actions);
  close(commands[0]);
  close(answers[1]);
  toPeer_ = commands[1];
  fromPeer_ = answers[0];
  if (result != 0) throw std::runtime_error("no peer");
}

Peer::~Peer() {
  close(toPeer_);
  wasKilled();
  close(fromPeer_);
}

void Peer::tell(const std::string& command) {
  const std::string line = command + '\n';
  if (write(toPeer_, line.data(), line.size()) != static_cast<ssize_t>(line.size())) {
    throw std::runtime_error("peer is gone");
  }
}

uint32_t Peer::answer() {
  while (answers_.empty()) takeLine();
  return takeFirst(answers_);
}

std::string Peer::event() {
  while (events_.empty()) takeLine();
  return takeFirst(events_);
}

bool Peer::wasKilled() {
  int status = 0;
  return processId_ > 0 && waitpid(std::exchange(processId_, -1), &status, 0) > 0 && WIFSIGNALED(status);
}

void Peer::takeLine() {
  while (received_.find('\n') == std::string::npos) {
    char buffer[4096];
    pollfd input{fromPeer_, POLLIN, 0};
    const ssize_t count = poll(&input, 1, kPatienceMilliseconds) > 0 ? read(fromPeer_, buffer, sizeof buffer) : 0;
    if (count <= 0) throw std::runtime_error("no answer from peer");
    received_.append(buffer, static_cast<size_t>(count));
  }
  const std::string line = received_.substr(0, received_.find('\n'));
  received_.erase(0, line.size() + 1);
  if (line.starts_with("= ")) {
    answers_.push_back(static_cast<uint32_t>(std::stoul(line.substr(2))));
  } else {
    events_.push_back(line);
  }
}

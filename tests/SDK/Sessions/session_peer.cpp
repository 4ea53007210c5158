// session_peer SEMAPHORE MEMORY PREFIX: works on a registry as its input says, a command a line, and answers each with
// "= " and a number. Other lines tell what its observers were told.

#include <atomic>
#include <csignal>
#include <iostream>
#include <memory>
#include <mutex>
#include <sstream>
#include <string>

#include <unistd.h>

#include "Files/OvSettings.h"
#include "Sessions/NamedSemaphore.h"
#include "Sessions/OvSessionManager.h"
#include "Sessions/SessionEvent.h"
#include "Sessions/SocketAddress.h"

namespace {

void writeLine(const std::string& line) {
  static std::mutex mutex;
  const std::scoped_lock lock(mutex);
  std::cout << line << std::endl;
}

class Observer : public OvSessionManagerObserver, public OvSessionObserver {
 public:
  void sessionAdded(uint32_t id) override { tell("added", id); }
  void sessionRemoved(uint32_t id) override { tell("removed", id); }
  void logoffSession(uint32_t id) override { tell("logoff", id); }
  void disconnectSession(uint32_t id) override { tell("disconnect", id); }
  void activateSessionView(uint32_t id) override { tell("activate", id); }
  void startApplication(uint32_t id, const char* program, const char* workingDir) override {
    ++started_;
    // The only other thread waits for input: none of this process holds the semaphore now.
    if (std::string_view(program) == "die") raise(SIGKILL);
    if (std::string_view(program) == "leave") manager.reset();
    if (*program) tell("start", id, std::string(" ") + program + " in " + workingDir);
  }
  uint32_t started() const { return started_; }
  void beQuiet() { isQuiet_ = true; }

  std::unique_ptr<OvSessionManager> manager;

 private:
  void tell(const char* what, uint32_t id, const std::string& more = {}) {
    if (!isQuiet_) writeLine(what + (" " + std::to_string(id)) + more);
  }
  std::atomic<uint32_t> started_ = 0;
  std::atomic<bool> isQuiet_ = false;
};

OvSettings settingsFor(const std::string& server) {
  OvSettings settings;
  settings.setServerName(server.c_str());
  return settings;
}

// Everything at once, for as many rounds. Returns how many programs were started in sessions whose server is "keep",
// or a number above a million if something was not as it should be.
uint32_t storm(int rounds) {
  uint32_t started = 0;
  uint32_t lastId = 0;
  const std::string own = "s" + std::to_string(getpid());
  for (int round = 0; round < rounds; ++round) {
    OvSessionManager manager;
    const uint32_t id = manager.addSession(settingsFor(own), nullptr);
    if (id != 0) {
      if (id <= lastId || manager.findSession(settingsFor(own)) != id) return 1'000'001;
      lastId = id;
    }
    for (const auto& session : manager.getSessionList()) {
      if (session->server == "keep" && manager.startApplication(session->sessionId, "", "")) ++started;
    }
    if (manager.removeSession(id) != (id != 0)) return 1'000'002;
    if (manager.findSession(settingsFor(own)) != 0) return 1'000'003;
  }
  return started;
}

// What a program does that doesn't keep to the rules. Whether the bytes get through is the listener's choice.
bool connectAndSend(const std::string& path) {
  const orvane::SocketAddress address(path);
  const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (connect(socket, address.pointer(), address.size()) != 0) return false;
  const OvSESSIONMANAGER_EVENT event{SessionAdded, 66, {}, {}};
  send(socket, &event, sizeof event, MSG_NOSIGNAL);
  return true;
}

bool bindAndListen(const std::string& path) {
  const orvane::SocketAddress address(path);
  const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  return bind(socket, address.pointer(), address.size()) == 0 && listen(socket, 10) == 0;
}

}  // namespace

int main(int, char** arguments) {
  const orvane::SessionRegistryNames names{arguments[1], arguments[2], arguments[3]};
  OvSessionManager::useRegistry(names);
  Observer observer;
  std::unique_ptr<OvSessionManager>& manager = observer.manager;
  orvane::NamedSemaphore semaphore;
  for (std::string line; std::getline(std::cin, line);) {
    std::istringstream words(line);
    std::string command, text;
    uint32_t number = 0;
    words >> command;
    if (command == "open") {
      manager = std::make_unique<OvSessionManager>(&observer);
    } else if (command == "close") {
      manager.reset();
      number = observer.started();
    } else if (command == "quiet") {
      observer.beQuiet();
    } else if (command == "add") {
      words >> text;
      number = manager->addSession(settingsFor(text), &observer);
    } else if (command == "find") {
      words >> text;
      number = manager->findSession(settingsFor(text));
    } else if (command == "start") {
      words >> number >> text;
      number = static_cast<uint32_t>(manager->startApplication(number, text.c_str(), nullptr));
    } else if (command == "remove") {
      words >> number;
      number = static_cast<uint32_t>(manager->removeSession(number));
    } else if (command == "storm") {
      words >> number;
      number = storm(static_cast<int>(number));
    } else if (command == "hold") {
      number = semaphore.open(names.semaphore) && semaphore.take();
    } else if (command == "send") {
      words >> number;
      number = connectAndSend(names.socketPath(number));
    } else if (command == "listen") {
      number = bindAndListen(names.socketPath(static_cast<uint32_t>(getpid())));
    } else if (command == "become") {
      words >> number;
      number = setgid(number) == 0 && setuid(number) == 0;
    }
    writeLine("= " + std::to_string(number));
  }
}

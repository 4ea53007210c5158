#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include <semaphore.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

#include "Sessions/EventConnection.h"
#include "Sessions/OvSessionManagerImpl.h"

namespace {

using orvane::EventConnection;

void require(bool holds) {
  if (!holds) abort();
}

struct Counter : OvSessionManagerObserver, OvSessionObserver {
  void sessionAdded(uint32_t) override { ++calls; }
  void sessionRemoved(uint32_t) override { ++calls; }
  void logoffSession(uint32_t) override { ++calls; }
  void disconnectSession(uint32_t) override { ++calls; }
  void activateSessionView(uint32_t) override { ++calls; }
  void startApplication(uint32_t, const char* program, const char* workingDir) override {
    ++calls;
    require(strlen(program) < 1024 && strlen(workingDir) < 1024);
  }
  int calls = 0;
};

// A registry of this process's own with one session, 1, to which events can go.
struct Registry {
  Registry() {
    observers.add(&counter);
    require(manager.addSession({OvSessionManagerImpl::getProcessId(), 0, 0, 1, 0, {}, {}, {}}, &counter) == 1);
    sem_unlink(names.semaphore.c_str());
    shm_unlink(names.sharedMemory.c_str());
  }
  const std::string base = "/orvane-fuzz-" + std::to_string(getpid());
  const orvane::SessionRegistryNames names{base + ".mutex", base + ".shared", "/tmp" + base + ".socket"};
  Counter counter;
  OvSessionManagerImpl::ManagerObservers observers;
  OvSessionManagerImpl manager{names, observers};
};

}  // namespace

// The first byte tells how the rest is cut into two pieces.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static Registry registry;
  if (size < 1) return 0;
  const uint8_t* const bytes = data + 1;
  const size_t count = size - 1;
  const size_t firstPiece = count * data[0] / 256;

  int sockets[2];
  require(socketpair(AF_UNIX, SOCK_STREAM, 0, sockets) == 0);
  EventConnection connection(sockets[0], {});
  require(send(sockets[1], bytes, firstPiece, 0) == static_cast<ssize_t>(firstPiece));
  EventConnection::State state = connection.receive();
  require((state == EventConnection::State::Complete) == (firstPiece >= sizeof(OvSESSIONMANAGER_EVENT)));
  require(send(sockets[1], bytes + firstPiece, count - firstPiece, 0) == static_cast<ssize_t>(count - firstPiece));
  close(sockets[1]);
  state = connection.receive();
  require((state == EventConnection::State::Complete) == (count >= sizeof(OvSESSIONMANAGER_EVENT)));
  if (state != EventConnection::State::Complete) {
    require(state == EventConnection::State::Failed && connection.bytesRead() == static_cast<int>(count));
    return 0;
  }
  const OvSESSIONMANAGER_EVENT& event = connection.event();
  require(memcmp(&event, bytes, sizeof event) == 0);
  registry.counter.calls = 0;
  const int result = registry.manager.fireEvent(event, false);
  require(result == 0 || (event.sessionId == 1 && event.eventCode >= LogoffSession));
  const bool isNews = event.eventCode == SessionAdded || event.eventCode == SessionRemoved;
  require(registry.counter.calls == (isNews ? 1 : result));
  return 0;
}

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <new>
#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>
#include <sched.h>
#include <semaphore.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Files/OvSettings.h"
#include "Sessions/OvSessionManager.h"
#include "Sessions/SessionEvent.h"
#include "Sessions/SharedSegment.h"
#include "Sessions/SocketAddress.h"

namespace {

OvSettings settingsFor(const std::string& servers) {
  OvSettings settings;
  settings.setServerName(servers.c_str());
  settings.setDomain("CORP");
  settings.setUsername("ann");
  return settings;
}

// A registry of this run's own, whose names go with it, those that killed processes leave too.
class Registry {
 public:
  Registry() { OvSessionManager::useRegistry(names_); }
  ~Registry() {
    sem_unlink(names_.semaphore.c_str());
    shm_unlink(names_.sharedMemory.c_str());
    std::filesystem::remove_all(folder_);
  }
  std::string peerPath() const { return names_.socketPrefix + ".peer"; }

 private:
  static std::string newFolder() {
    std::string name = "/tmp/orvane-bench-XXXXXX";
    if (!mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
    return name;
  }
  const std::string folder_ = newFolder();
  const std::string base_ = folder_.substr(folder_.rfind('/'));
  const orvane::SessionRegistryNames names_{base_ + ".mutex", base_ + ".shared", folder_ + "/socket"};
};

void openAndClose(benchmark::State& state) {
  const Registry registry;
  for ([[maybe_unused]] auto _ : state) OvSessionManager manager;
}
BENCHMARK(openAndClose)->Unit(benchmark::kMicrosecond);

// The last of all slots fits, by the second server of the list.
void findSessionAmongTwenty(benchmark::State& state) {
  const Registry registry;
  OvSessionManager manager;
  uint32_t last = 0;
  for (size_t slot = 1; slot <= kSessionSlots; ++slot) {
    last = manager.addSession(settingsFor("server" + std::to_string(slot)), nullptr);
  }
  const OvSettings settings = settingsFor("another,SERVER20");
  for ([[maybe_unused]] auto _ : state) {
    if (manager.findSession(settings) != last) state.SkipWithError("not found");
  }
}
BENCHMARK(findSessionAmongTwenty)->Unit(benchmark::kMicrosecond);

// What a receiving process tells of its arrivals, in memory that it shares with the sender.
struct Arrivals {
  std::atomic<uint32_t> count = 0;
  std::atomic<int64_t> lastNanoseconds = 0;
  std::atomic<uint32_t> sessionId = 0;  // when the receiver is ready
  void note() {
    lastNanoseconds = now();
    ++count;
  }
  static int64_t now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * 1'000'000'000 + time.tv_nsec;
  }
};

struct NotingObserver : OvSessionObserver {
  explicit NotingObserver(Arrivals& arrivals) : arrivals_(arrivals) {}
  void logoffSession(uint32_t) override {}
  void disconnectSession(uint32_t) override {}
  void startApplication(uint32_t, const char*, const char*) override { arrivals_.note(); }
  void activateSessionView(uint32_t) override {}
  Arrivals& arrivals_;
};

// A process that runs `receive` until it is killed. There are no threads here when it is forked off.
class Receiver {
 public:
  template <typename Receive>
  explicit Receiver(Receive receive)
      : arrivals_(new (mmap(nullptr, sizeof(Arrivals), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))
                      Arrivals),
        process_(fork()) {
    if (process_ == 0) {
      receive(*arrivals_);
      _exit(0);
    }
    while (arrivals_->sessionId == 0) sched_yield();
  }
  ~Receiver() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
    munmap(arrivals_, sizeof(Arrivals));
  }
  uint32_t sessionId() const { return arrivals_->sessionId; }

  // The time of an iteration is that from the start of `send` to the receiver's note.
  template <typename Send>
  void measure(benchmark::State& state, Send send) {
    for ([[maybe_unused]] auto _ : state) {
      const uint32_t before = arrivals_->count;
      const int64_t start = Arrivals::now();
      if (!send()) state.SkipWithError("not sent");
      while (!state.error_occurred() && arrivals_->count == before) sched_yield();
      state.SetIterationTime(static_cast<double>(arrivals_->lastNanoseconds - start) / 1e9);
    }
  }

 private:
  Arrivals* const arrivals_;
  const pid_t process_;
};

void startApplicationInAnotherProcess(benchmark::State& state) {
  const Registry registry;
  Receiver receiver([](Arrivals& arrivals) {
    NotingObserver observer(arrivals);
    OvSessionManager manager;
    arrivals.sessionId = manager.addSession(settingsFor("server"), &observer);
    for (;;) pause();
  });
  OvSessionManager manager;
  receiver.measure(state, [&] { return manager.startApplication(receiver.sessionId(), "program", "folder"); });
}
BENCHMARK(startApplicationInAnotherProcess)->UseManualTime()->Unit(benchmark::kMicrosecond);

// What the row above is to be held against: as many bytes on a connection, and nothing around it.
void bareConnectSendAndClose(benchmark::State& state) {
  const Registry registry;
  const orvane::SocketAddress address(registry.peerPath());
  Receiver receiver([&address](Arrivals& arrivals) {
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    if (bind(listener, address.pointer(), address.size()) != 0 || listen(listener, 10) != 0) return;
    arrivals.sessionId = 1;
    OvSESSIONMANAGER_EVENT event{};
    for (;;) {
      const int connection = accept(listener, nullptr, nullptr);
      if (read(connection, &event, sizeof event) == static_cast<ssize_t>(sizeof event)) arrivals.note();
      close(connection);
    }
  });
  const OvSESSIONMANAGER_EVENT event{StartApplicationEvent, 1, {}, {}};
  receiver.measure(state, [&] {
    const int connection = socket(AF_UNIX, SOCK_STREAM, 0);
    const bool isSent = connect(connection, address.pointer(), address.size()) == 0 &&
                        send(connection, &event, sizeof event, 0) == static_cast<ssize_t>(sizeof event);
    close(connection);
    return isSent;
  });
}
BENCHMARK(bareConnectSendAndClose)->UseManualTime()->Unit(benchmark::kMicrosecond);

}  // namespace

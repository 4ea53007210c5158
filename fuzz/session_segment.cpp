#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include <fcntl.h>
#include <semaphore.h>
#include <sys/mman.h>
#include <unistd.h>

#include "Files/OvSettings.h"
#include "Sessions/OvSessionManager.h"
#include "Sessions/SharedSegment.h"

namespace {

void require(bool holds) {
  if (!holds) abort();
}

// Nobody but sessions that were added through this process may reach it.
struct Unreachable : OvSessionObserver {
  void logoffSession(uint32_t) override { abort(); }
  void disconnectSession(uint32_t) override { abort(); }
  void startApplication(uint32_t, const char*, const char*) override { abort(); }
  void activateSessionView(uint32_t) override { abort(); }
};

OvSettings settingsFor(const char* servers) {
  OvSettings settings;
  settings.setServerName(servers);
  return settings;
}

// A registry of this process's own, and the segment as a hostile process would have it.
struct Registry {
  Registry() {
    OvSessionManager::useRegistry(names);
    manager = std::make_unique<OvSessionManager>();
    const int file = shm_open(names.sharedMemory.c_str(), O_RDWR, 0);
    void* const memory = mmap(nullptr, sizeof *segment, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    require(memory != MAP_FAILED);
    close(file);
    segment = static_cast<OvSharedSegment*>(memory);
  }
  ~Registry() {
    manager.reset();
    sem_unlink(names.semaphore.c_str());
    shm_unlink(names.sharedMemory.c_str());
  }
  const std::string base = "/orvane-fuzz-" + std::to_string(getpid());
  const orvane::SessionRegistryNames names{base + ".mutex", base + ".shared", "/tmp" + base + ".socket"};
  std::unique_ptr<OvSessionManager> manager;
  OvSharedSegment* segment = nullptr;
};

}  // namespace

// The bytes are the segment's first ones; the rest is zero.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static Registry registry;
  OvSessionManager& manager = *registry.manager;
  OvSharedSegment& segment = *registry.segment;
  memset(&segment, 0, sizeof segment);
  memcpy(&segment, data, std::min(size, sizeof segment));
  const auto used = [&segment] {
    return std::count_if(std::begin(segment.sessions), std::end(segment.sessions),
                         [](const OvSESSION_INFO& record) { return record.sessionId != 0; });
  };

  const auto sessions = manager.getSessionList();
  require(static_cast<std::ptrdiff_t>(sessions.size()) <= used());
  for (const auto& session : sessions) {
    require(session->sessionId != 0 && session->server.size() < 512 && session->domain.size() < 128 &&
            session->username.size() < 130);
    manager.getSessionInfo(session->sessionId);
  }
  const OvSettings settings = settingsFor("a,b");
  const uint32_t found = manager.findSession(settings);
  require(found == 0 || std::any_of(sessions.begin(), sessions.end(), [found](const auto& session) {
            return session->sessionId == found && session->sessionSharing;
          }));
  if (found != 0) manager.startApplication(found, "program", "folder");

  static Unreachable observer;
  const auto before = used();
  const uint32_t added = manager.addSession(settings, &observer);
  require((added != 0) == (before < static_cast<std::ptrdiff_t>(kSessionSlots)));
  if (added != 0) {
    require(used() == before + 1 && manager.getSessionInfo(added)->server == "a");
    require(manager.removeSession(added) == 1 && used() == before);
  }
  if (!sessions.empty()) require(manager.removeSession(sessions.front()->sessionId) == 1 && used() == before - 1);
  return 0;
}

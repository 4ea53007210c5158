#pragma once

#include <map>
#include <mutex>

#include "Sessions/NamedSemaphore.h"
#include "Sessions/OvSessionManagerImpl.h"
#include "Sessions/SessionListener.h"

namespace orvane {

/// The observers of the sessions that this process holds. The segment holds their handles: a pointer wouldn't fit, and
/// one that comes back from shared memory could not be trusted.
class SessionObservers {
 public:
  SessionObservers();

  /// The handle for the session's record, or 0 for null.
  uint32_t add(OvSessionObserver* observer) { return observer ? table_.add(observer) : 0; }
  /// Remembers which session the handle was for.
  void assign(uint32_t handle, uint32_t sessionId);
  void remove(uint32_t handle) { table_.remove(handle); }
  void removeSession(uint32_t sessionId);
  template <typename Use>
  bool call(uint32_t handle, Use use) {
    return table_.call(handle, use);
  }

 private:
  ObserverTable<OvSessionObserver> table_;
  std::mutex mutex_;
  std::map<uint32_t, uint32_t> handles_;  // by session
};

}  // namespace orvane

/// What OvSessionManagerImpl works with while the registry is open.
struct CONTEXTSTRUCT {
  CONTEXTSTRUCT(const orvane::SessionRegistryNames& registryNames,
                OvSessionManagerImpl::ManagerObservers& processObservers)
      : names(registryNames), managerObservers(processObservers) {}

  const orvane::SessionRegistryNames names;
  OvSessionManagerImpl::ManagerObservers& managerObservers;
  orvane::SessionObservers sessionObservers;
  orvane::NamedSemaphore semaphore;
  int fdSharedMemory = -1;                   // -1 when closed
  OvSharedSegment* pSharedMemory = nullptr;  // null when unmapped
  std::unique_ptr<orvane::SessionListener> listener;
};

namespace orvane {

/// Opens and maps the shared memory and counts this process in. False after a failure, which `function` logs; nothing
/// stays open then. The caller has the semaphore's turn, here and below.
bool openSharedMemory(CONTEXTSTRUCT& context, const char* function);

/// Counts this process out if it is counted in, unmaps and closes, and removes the name if no process is left.
void closeSharedMemory(CONTEXTSTRUCT& context);

/// For when the turn is not to be had: unmaps and closes, and changes nothing that others see.
void abandonSharedMemory(CONTEXTSTRUCT& context);

}  // namespace orvane

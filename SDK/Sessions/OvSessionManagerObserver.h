#pragma once

#include <cstdint>

/// Is told about sessions that come and go anywhere on the machine; given to the constructor of OvSessionManager.
///
/// The calls come on the thread that added or removed the session if it is in this process, else on the listener
/// thread, and several may come at the same time. A call must not throw.
class OvSessionManagerObserver {
 public:
  virtual ~OvSessionManagerObserver() = default;

  virtual void sessionAdded(uint32_t sessionId) = 0;
  virtual void sessionRemoved(uint32_t sessionId) = 0;
};

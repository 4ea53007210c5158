#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "Sessions/OvSessionInfo.h"
#include "Sessions/OvSessionManagerObserver.h"
#include "Sessions/OvSessionObserver.h"
#include "Sessions/SessionRegistryNames.h"

class OvSessionManagerImpl;
class OvSettings;

/// The sessions that run on this machine: finds one that takes a launch, sends commands to the process that holds one,
/// and tells of those that come and go.
///
/// While at least one object exists, the process can be reached by others. A launcher makes one on the stack around
/// each use; a session program keeps one for as long as it holds a session. Objects are independent of each other and
/// may live on any threads; a child of fork must not use those of its parent.
///
/// Without a registry (no rights, no memory, another user's segment, a semaphore that a killed process holds: all in
/// the log) everything here returns 0 or nothing, so that each launch starts a session of its own. No operation takes
/// longer than a few seconds, whatever state other processes are in.
class OvSessionManager {
 public:
  /// `observer`, which may be null, hears of sessions that come and go, until the destructor returns.
  explicit OvSessionManager(OvSessionManagerObserver* observer = nullptr);

  /// Ends the calls of the object's observer, also those that other objects with the same observer have made for.
  ///
  /// Returns only after a call of it that another thread is in has returned, so that the observer may be destroyed
  /// next; so don't hold a lock here that the observer takes. From inside such a call the object may be destroyed too,
  /// and then that call alone is not waited for. The process's last object also waits for the listener thread and the
  /// session observer that it calls, which must not destroy it from there; if that happens all the same, the registry
  /// is closed as soon as the call has returned.
  ~OvSessionManager();
  OvSessionManager(const OvSessionManager&) = delete;
  OvSessionManager& operator=(const OvSessionManager&) = delete;

  /// Which registry the process uses from the next time that it opens one, which it does when it makes an object and
  /// has no other. Not needed for the machine's own.
  static void useRegistry(orvane::SessionRegistryNames names);

  /// The first session, in the table's order, that may be shared and fits: its server is one of the comma-separated
  /// list in the settings' server name, and domain and user name are those of the settings where these have one.
  /// Upper and lower case of ASCII letters count as equal.
  /// @return its id, or 0 if there is none or the settings don't allow sharing.
  uint32_t findSession(const OvSettings& settings);

  /// Makes a session of this process known, and tells all observers everywhere.
  ///
  /// Of the server list the first item is stored, cut to 255 bytes. `sessionObserver`, which may be null, gets what
  /// others ask of the session until removeSession returns here or the process's last object is gone.
  /// @return the session's id, or 0 if the table is full or if the domain (above 127 bytes) or user name (above 129)
  ///         is too long to be stored.
  uint32_t addSession(const OvSettings& settings, OvSessionObserver* sessionObserver);

  /// Takes a session, of whichever process, out of the table and tells all observers everywhere. Waits for a call of
  /// the session's observer that another thread of this process is in.
  /// @return 1, or 0 if there is no such session.
  int removeSession(uint32_t sessionId);

  /// The session with this id; an empty pointer if there is none.
  std::shared_ptr<OvSessionInfo> getSessionInfo(uint32_t sessionId);
  /// All sessions, in the table's order.
  std::vector<std::shared_ptr<OvSessionInfo>> getSessionList();

  /// @name Commands to the process that holds the session
  /// 1 if its observer was called or, in another process, the command was handed over, which doesn't say that anybody
  /// acted on it. 0 if there is no such session, it has no observer, or its process can't be reached.
  /// @{
  int logoffSession(uint32_t sessionId);
  int disconnectSession(uint32_t sessionId);
  int activateSessionView(uint32_t sessionId);
  /// Null for a text counts as empty. 0, too, if one has more than kLongestText bytes: no reason to take the session
  /// for dead.
  int startApplication(uint32_t sessionId, const char* program, const char* workingDir);
  /// @}

  /// Bytes that a text of startApplication may have.
  static constexpr size_t kLongestText = 1023;

 private:
  int fireEvent(uint32_t eventCode, uint32_t sessionId);

  std::shared_ptr<OvSessionManagerImpl> implementation_;
  OvSessionManagerObserver* const observer_;
};

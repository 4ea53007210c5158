#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <vector>

#include "Sessions/ObserverTable.h"
#include "Sessions/OvSessionManagerObserver.h"
#include "Sessions/OvSessionObserver.h"
#include "Sessions/SessionEvent.h"
#include "Sessions/SessionRegistryNames.h"
#include "Sessions/SharedSegment.h"

struct CONTEXTSTRUCT;

/// What a process has of the session registry: the shared segment, the semaphore around it and the listening socket.
/// OvSessionManager shares one object of this class among all its own.
///
/// Any thread may call anything. A table operation takes the semaphore for its whole run, which is a short copy. If
/// opening failed, or if the semaphore is not to be had within NamedSemaphore::kPatienceSeconds, an operation returns
/// 0, null or an empty list and leaves a log line.
class OvSessionManagerImpl {
 public:
  using ManagerObservers = orvane::ObserverTable<OvSessionManagerObserver>;

  /// Opens the registry, making what is missing, and starts to listen. A failure is logged and leaves an object that is
  /// not open. `observers`, which must outlive the object, hear of sessions that come and go.
  OvSessionManagerImpl(const orvane::SessionRegistryNames& names, ManagerObservers& observers);

  /// Closes the registry; the last process that does removes the segment's name. Waits for the listener thread, and so
  /// for an observer that it calls: not to be run by such an observer.
  ~OvSessionManagerImpl();
  OvSessionManagerImpl(const OvSessionManagerImpl&) = delete;
  OvSessionManagerImpl& operator=(const OvSessionManagerImpl&) = delete;

  static uint32_t getProcessId();

  /// Makes a process one that broadcasts reach. 1, or 0 if all slots are taken.
  int addProcess(uint32_t processId);
  /// Frees the lowest slot that holds the id. 1, or 0 if there is none.
  int removeProcess(uint32_t processId);
  /// All processes in the table, in slot order.
  std::vector<uint32_t> getProcessList();

  /// Adds a copy of the record under a new id, which no other session of this segment has had. `observer`, if not null,
  /// gets what is asked of the session until removeSession returns; the record's own fields `sessionId` and `observer`
  /// are ignored. 0 if the table is full or if a text of the record has no terminator.
  uint32_t addSession(const OvSESSION_INFO& session, OvSessionObserver* observer = nullptr);
  /// A copy of the session's record; null if there is none or its texts have no end.
  std::unique_ptr<OvSESSION_INFO> getSessionInfo(uint32_t sessionId);
  /// Clears the session's record. 1, or 0 if there is none. Waits for the calls of the session's observer on other
  /// threads, even if its record had gone before.
  int removeSession(uint32_t sessionId);
  /// Copies of all records in use, in slot order, without those whose texts have no end.
  std::vector<OvSESSION_INFO> getSessionList();

  /// Brings an event to those whom it concerns: SessionAdded and SessionRemoved to the observers of this process and
  /// then, if `broadcast` is set, to all other processes; the codes for one session to its observer or, if `broadcast`
  /// is set, to the process that holds it.
  /// @return 1 if the event is for one session and was handed over, else 0.
  int fireEvent(const OvSESSIONMANAGER_EVENT& event, bool broadcast);

  /// Sends an event to all other processes in the table. One that can't be reached is passed over; those that are stuck
  /// hold the caller up for two seconds in all.
  void broadcastEvent(const OvSESSIONMANAGER_EVENT& event);

  /// Sends an event to one process; nothing is done, with success, if it is this one. Waits up to 5 seconds for a
  /// process that is stuck.
  /// @return 1 if the process's system took the bytes, which doesn't say that anybody acted on them; else 0.
  int sendEvent(uint32_t processId, const OvSESSIONMANAGER_EVENT& event);

  /// Ends the taking of events, without waiting for the listener thread. The path is free from then on.
  void stopListening();
  /// True on the thread on which events from other processes are handled.
  bool isListenerThread() const;

 private:
  bool openContext(const orvane::SessionRegistryNames& names, ManagerObservers& observers);
  void destroyContext();
  bool isOpen(const char* function) const;
  template <typename Work>
  auto underSemaphore(const char* function, Work work);
  int fireSessionEvent(const OvSESSIONMANAGER_EVENT& event, bool broadcast);
  int send(uint32_t processId, const OvSESSIONMANAGER_EVENT& event, std::chrono::milliseconds patience);

  std::unique_ptr<CONTEXTSTRUCT> context_;  // null if the registry is not open
};

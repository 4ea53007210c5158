#pragma once

#include <cstddef>
#include <cstdint>

/// @file
/// The shared memory of the session registry, as all processes on the machine map it: native byte order, no padding,
/// every offset fixed. Whatever is read from it may have been written by a faulty or hostile process.
/// docs/session-registry.md describes it for other programs.

inline constexpr size_t kProcessSlots = 20;
inline constexpr size_t kSessionSlots = 20;

/// One running session. The texts are UTF-8 and zero-terminated.
struct OvSESSION_INFO {
  uint32_t processId;  ///< the process that holds the session
  uint32_t sessionId;  ///< 0: the record is free
  /// 0, or the holder's handle of its OvSessionObserver: means nothing to any other process
  uint32_t observer;
  uint8_t sessionSharing;  ///< 0 or 1: the session may take further applications
  uint8_t sslGateway;      ///< 0 or 1: it runs through an SSL gateway
  char server[512];        ///< the first item of the server list
  char domain[128];        ///< empty if none
  char username[130];      ///< empty if none
};

/// The whole segment. The semaphore guards every word of it.
struct OvSharedSegment {
  uint32_t refCount;                  ///< processes that have the segment mapped
  uint32_t nextSessionId;             ///< what the next session gets; 0 in a segment that nobody has used yet
  uint32_t processes[kProcessSlots];  ///< identifiers of the processes that events reach; 0: the slot is free
  OvSESSION_INFO sessions[kSessionSlots];
};

static_assert(offsetof(OvSESSION_INFO, processId) == 0);
static_assert(offsetof(OvSESSION_INFO, sessionId) == 4);
static_assert(offsetof(OvSESSION_INFO, observer) == 8);
static_assert(offsetof(OvSESSION_INFO, sessionSharing) == 12);
static_assert(offsetof(OvSESSION_INFO, sslGateway) == 13);
static_assert(offsetof(OvSESSION_INFO, server) == 14);
static_assert(offsetof(OvSESSION_INFO, domain) == 526);
static_assert(offsetof(OvSESSION_INFO, username) == 654);
static_assert(sizeof(OvSESSION_INFO) == 784);

static_assert(offsetof(OvSharedSegment, refCount) == 0);
static_assert(offsetof(OvSharedSegment, nextSessionId) == 4);
static_assert(offsetof(OvSharedSegment, processes) == 8);
static_assert(sizeof(OvSharedSegment::processes) == 80);
static_assert(offsetof(OvSharedSegment, sessions) == 88);
static_assert(sizeof(OvSharedSegment::sessions) == 15680);
static_assert(sizeof(OvSharedSegment) == 15768);

#pragma once

#include <cstddef>
#include <cstdint>

/// What an event tells or asks for. Other codes are ignored.
enum OvSessionEventCode : uint32_t {
  SessionAdded = 0,
  SessionRemoved = 1,
  LogoffSession = 3,
  DisconnectSession = 4,
  StartApplicationEvent = 5,
  ActivateSessionView = 6,
};

/// What one process sends to another: exactly these bytes on a connection of its own, in native byte order, unused ones
/// zero. The texts are UTF-8 and zero-terminated.
struct OvSESSIONMANAGER_EVENT {
  uint32_t eventCode;  ///< an OvSessionEventCode
  uint32_t sessionId;
  char program[1024];     ///< StartApplicationEvent: the command line
  char workingDir[1024];  ///< StartApplicationEvent: may be empty
};

static_assert(offsetof(OvSESSIONMANAGER_EVENT, eventCode) == 0);
static_assert(offsetof(OvSESSIONMANAGER_EVENT, sessionId) == 4);
static_assert(offsetof(OvSESSIONMANAGER_EVENT, program) == 8);
static_assert(offsetof(OvSESSIONMANAGER_EVENT, workingDir) == 1032);
static_assert(sizeof(OvSESSIONMANAGER_EVENT) == 2056);

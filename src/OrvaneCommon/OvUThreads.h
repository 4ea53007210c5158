#pragma once

#include "Platform/Queues.h"

/// Runs `action` on the main thread and returns when it has run: at once if that is the current thread, else through
/// the queue. Any thread; not one that the main thread waits for. If the queue lets the action go without running it,
/// as at the program's end, this returns all the same.
void OvU_ExecuteOnMainQueueSync(orvane::MainQueue& mainQueue, const orvane::Work& action);

/// Has the main thread call `terminate`, which ends the program, some time after this returned. Any thread.
void OvU_TerminateAppAsyncOnMainQueue(orvane::MainQueue& mainQueue, orvane::Work terminate);

// There is no OvU_InitCryptoLocks: OpenSSL has locked itself since 1.1 and takes no locks of a program.

#pragma once

#include <memory>

#include "Platform/Queues.h"

/// @file
/// The queues of a running program, on threads of their own.
///
/// A queue costs a thread only while it has work, and for ten seconds more, in case work comes again. Its threads are
/// detached: nobody ever waits for them, as one may be blocked for as long as a server or the user likes. So a program
/// that has used a queue leaves with endProcess(), and never through exit() while a thread may still be at work.
///
/// A queue may be let go at any time, from its own work too: what was posted still runs, unless the process ends first.
/// Work that throws ends the process (std::terminate).
///
/// If the system refuses a thread, a line stands in the log, and the work waits for a thread of its queue that comes
/// free, or for the next post, which tries again.

namespace orvane {

/// A queue whose thread is named "orvane-serial".
std::shared_ptr<SerialQueue> makeSerialQueue();

/// A queue with as many threads as it has work at a time, without limit: work that is blocked holds no other work. They
/// are named "orvane-global".
std::shared_ptr<GlobalQueue> makeGlobalQueue();

}  // namespace orvane

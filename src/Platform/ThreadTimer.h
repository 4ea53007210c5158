#pragma once

#include <memory>

#include "Platform/Timer.h"

namespace orvane {

/// The timer of a running program, by a clock that nobody sets. Its thread, named "orvane-timer", starts with the first
/// work and is there until the timer is let go and nothing waits any more.
///
/// The thread is detached, in the manner of the queues of Platform/ThreadQueues.h: a timer may be let go at any time,
/// from its own work too; what waits still runs unless the process ends first; work that throws ends the process. If
/// the system refuses the thread, a line stands in the log, and the next call tries again.
std::shared_ptr<Timer> makeTimer();

}  // namespace orvane

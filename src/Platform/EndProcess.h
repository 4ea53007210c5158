#pragma once

namespace orvane {

/// Ends the process at once with this exit status, while other threads may be blocked or at work.
///
/// No destructor of a static object runs, no exit handler, and no thread is waited for: a thread that is blocked on a
/// dead server or an unanswered prompt neither delays the end nor finds the objects gone that it is using. Work that is
/// still queued never runs. What stands in the buffers of standard streams is lost, so flush them first.
/// Callable on any thread; main() ends with it once its own objects are gone.
[[noreturn]] void endProcess(int status) noexcept;

}  // namespace orvane

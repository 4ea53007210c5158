#pragma once

#include <memory>

#include "Platform/Queues.h"

namespace orvane {

/// The main queue as events of the toolkit's loop, nested loops included: one piece of work for each pass of the loop,
/// so that input and painting have their turn between two of them.
///
/// May be let go on any thread; what was posted still runs. Once the QCoreApplication is gone nothing runs any more:
/// what waits then goes with the application, on the main thread, and what is posted later goes with the queue.
class EventLoopMainQueue final : public MainQueue {
 public:
  /// On the main thread, with a QCoreApplication.
  /// @throws std::system_error without a free file descriptor.
  EventLoopMainQueue();
  ~EventLoopMainQueue() override;
  EventLoopMainQueue(const EventLoopMainQueue&) = delete;
  EventLoopMainQueue& operator=(const EventLoopMainQueue&) = delete;

  void post(Work work) override;
  bool isCurrentThread() const override;

 private:
  class Waiting;
  class Runner;

  const std::shared_ptr<Waiting> waiting_;
};

}  // namespace orvane

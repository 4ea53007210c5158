#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "Orchestration/OvBrokerClientController.h"

namespace orvane {

/// Starts the operations of an OvBrokerClientController and brings what they tell and ask onto the main thread. Main
/// thread only.
class BrokerEvents {
 public:
  using Operation = std::function<std::shared_ptr<PendingTask>(OvBrokerClientController::Delegate)>;

  /// @param receiver is told everything on the main thread, in order, while it exists; it ends there too.
  BrokerEvents(std::weak_ptr<OvBrokerClientControllerDelegate> receiver, std::shared_ptr<MainQueue> mainQueue);
  ~BrokerEvents();

  /// Starts `operation` with a delegate of its own. From the moment that the task is cancelled the receiver hears
  /// nothing of it any more, nor of what was on its way, and prompts choose nothing.
  std::shared_ptr<PendingTask> start(const Operation& operation);

 private:
  class Relay;

  const std::weak_ptr<OvBrokerClientControllerDelegate> receiver_;
  const std::shared_ptr<MainQueue> mainQueue_;
  std::vector<std::shared_ptr<Relay>> relays_{};  // operations hold their delegates weakly
};

}  // namespace orvane

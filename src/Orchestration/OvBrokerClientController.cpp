#include "Orchestration/OvBrokerClientController.h"

OvBrokerClientController::OvBrokerClientController(Environment environment)
    : _farmManager(std::move(environment.farmManager)),
      _srvRecordsBrowser(std::move(environment.srvRecordsBrowser)),
      _launcher(std::move(environment.launcher)),
      _mainQueue(std::move(environment.mainQueue)),
      _globalQueue(std::move(environment.globalQueue)) {
  _farmManager->load();
}

void OvBrokerClientController::post(orvane::WorkQueue& queue, std::function<void()> flow) {
  queue.post([self = shared_from_this(), flow = std::move(flow)] {
    try {
      flow();
    } catch (const MainThreadIsGone&) {
    }
  });
}

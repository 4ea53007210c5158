#include "Controllers/MainMenuController.h"

#include <utility>

#include "Controllers/HelpAddress.h"
#include "Support/OvWriteLog.h"

MainMenuController::MainMenuController(std::shared_ptr<orvane::Opener> opener,
                                       std::shared_ptr<orvane::GlobalQueue> globalQueue)
    : _opener(std::move(opener)), _globalQueue(std::move(globalQueue)) {}

void MainMenuController::setEnabled(Item item, bool isEnabled) {
  _isEnabled[item] = isEnabled;
  changed();
}

bool MainMenuController::validateMenuItem(Item item) const {
  const auto found = _isEnabled.find(item);
  return found != _isEnabled.end() && found->second;
}

void MainMenuController::onHelpClick() {
  _globalQueue->post([opener = _opener, address = orvane::helpAddress(), caller = __func__] {
    if (!opener->openAddress(address)) OvWriteLog(2, "%s: Can't open help URL in browser", caller);
  });
}

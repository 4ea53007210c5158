#include "Controllers/ProductUpdateWindowController.h"

#include <charconv>
#include <utility>

#include "OrvaneCommon/LocalizedText.h"
#include "OrvaneCommon/OvUVersions.h"
#include "OrvaneCommon/TextFormat.h"

ProductUpdateWindowController::ProductUpdateWindowController(orvane::WindowHost& windows,
                                                             std::shared_ptr<orvane::Opener> opener,
                                                             std::shared_ptr<orvane::GlobalQueue> globalQueue)
    : _windows(windows), _opener(std::move(opener)), _globalQueue(std::move(globalQueue)) {}

void ProductUpdateWindowController::showUpdateWindowOnParent(orvane::WindowParent parent, const std::string& updateURL,
                                                             bool updateRequired, const std::string& avaliableVersion,
                                                             Choose onChooseBlock) {
  _updateURL = updateURL;
  _updateRequired = updateRequired;
  _avaliableVersion = avaliableVersion;
  _onChooseBlock = std::move(onChooseBlock);
  setupProductUpdateWindow();
  if (_isRunning) return;
  _isRunning = true;
  _windows.runModal(orvane::AuxiliaryWindow::kUpdate, parent);
  _isRunning = false;
}

void ProductUpdateWindowController::setupProductUpdateWindow() {
  _newVersion = removeForwardZeroesFromString(_avaliableVersion, ".");
  _cancelButtonTitle = _updateRequired ? orvane::localizedText("UpdateWindowController.Cancel.Title")
                                       : orvane::localizedText("UpdateWindowController.Later.Title");
  const std::string format = _updateRequired ? orvane::localizedText("OvBrokerClientController.UpdateRequired")
                                             : orvane::localizedText("OvBrokerClientController.UpdateNotRequired");
  _title = orvane::formatText(format, {OvU_GetConnectorVesrion(), _newVersion});
  changed();
}

std::string ProductUpdateWindowController::removeForwardZeroesFromString(std::string_view text,
                                                                         std::string_view separator) {
  std::string numbers;
  for (size_t start = 0; start <= text.size();) {
    const size_t end = std::min(text.find(separator, start), text.size());
    int number = 0;
    std::from_chars(text.data() + start, text.data() + end, number);
    if (start != 0) numbers += separator;
    numbers += std::to_string(number);
    start = end + separator.size();
  }
  return numbers;
}

void ProductUpdateWindowController::onInstallClick() { answerAndHide(kInstall, true); }

void ProductUpdateWindowController::onCancelClick() { answerAndHide(_updateRequired ? kCancel : kLater, false); }

void ProductUpdateWindowController::answerAndHide(Choice choice, bool opensUpdate) {
  const Choose onChoose = std::exchange(_onChooseBlock, nullptr);
  if (!onChoose) return;  // answered already
  const std::string url = _updateURL;
  resetContentWithBlockPerform(false);
  onChoose(choice);
  if (opensUpdate) _globalQueue->post([opener = _opener, url] { opener->openAddress(url); });
  _windows.stopModal(orvane::AuxiliaryWindow::kUpdate);
}

void ProductUpdateWindowController::resetContentWithBlockPerform(bool performs) {
  const Choose onChoose = std::exchange(_onChooseBlock, nullptr);
  _updateURL.clear();
  _avaliableVersion.clear();
  changed();
  if (performs && onChoose) onChoose(kCancel);
}

#include "Controllers/ProductUpdateWindowController.h"

#include <cstdlib>
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
  _parent = parent;
  _updateURL = updateURL;
  _updateRequired = updateRequired;
  _avaliableVersion = avaliableVersion;
  _onChooseBlock = std::move(onChooseBlock);
  setupProductUpdateWindow();
  if (std::exchange(_isRunning, true)) return;
  do {
    _isShown = true;
    _windows.runModal(orvane::AuxiliaryWindow::kUpdate, _parent);
  } while (!_isShown && _onChooseBlock);  // asked anew behind the answer, while runs inside this one went on
  _isShown = false;
  _isRunning = false;
  dropContent();
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
  for (;;) {
    const size_t end = separator.empty() ? std::string_view::npos : text.find(separator);
    numbers += std::to_string(std::strtoll(std::string(text.substr(0, end)).c_str(), nullptr, 10));
    if (end == std::string_view::npos) return numbers;
    numbers += separator;
    text.remove_prefix(end + separator.size());
  }
}

void ProductUpdateWindowController::onInstallClick() {
  if (_isShown) close(kInstall);
}

void ProductUpdateWindowController::onCancelClick() {
  if (_isShown) close(_updateRequired ? kCancel : kLater);
}

void ProductUpdateWindowController::resetContentWithBlockPerform(bool performs) {
  close(performs ? std::optional(kCancel) : std::nullopt);
}

void ProductUpdateWindowController::close(std::optional<Choice> choice) {
  const Choose onChoose = std::exchange(_onChooseBlock, nullptr);
  const std::string url = std::exchange(_updateURL, {});
  if (choice && onChoose) onChoose(*choice);
  if (choice == kInstall) _globalQueue->post([opener = _opener, url] { opener->openAddress(url); });
  if (_onChooseBlock) return;  // the callback asked anew: the window stays
  dropContent();
  _isShown = false;
  _windows.stopModal(orvane::AuxiliaryWindow::kUpdate);
}

void ProductUpdateWindowController::dropContent() {
  _onChooseBlock = nullptr;
  _updateURL.clear();
  _avaliableVersion.clear();
  _updateRequired = false;
  changed();
}

#include "Controllers/SettingsWindowController.h"

#include "OrvaneCommon/LocalizedText.h"
#include "OrvaneCommon/OvULog.h"

namespace {

struct BoxRow {
  bool (OrvaneSettings::*value)() const;
  void (OrvaneSettings::*setValue)(bool);
};

// In the order of SettingsWindowController::Box.
constexpr BoxRow kBoxes[SettingsWindowController::kBoxCount] = {
    {&OrvaneSettings::showTutorialOnStart, &OrvaneSettings::setShowTutorialOnStart},
    {&OrvaneSettings::neededToLog, &OrvaneSettings::setNeededToLog},
    {&OrvaneSettings::enableAdaptiveGraphics, &OrvaneSettings::setEnableAdaptiveGraphics},
    {&OrvaneSettings::fullscreenInMaximizedWindow, &OrvaneSettings::setFullscreenInMaximizedWindow},
    {&OrvaneSettings::forceDisableSeamless, &OrvaneSettings::setForceDisableSeamless},
    {&OrvaneSettings::translateCtrlLeftClickToRightClick, &OrvaneSettings::setTranslateCtrlLeftClickToRightClick},
    {&OrvaneSettings::askBeforeCloseSession, &OrvaneSettings::setAskBeforeCloseSession},
    {&OrvaneSettings::askBeforeLogoff, &OrvaneSettings::setAskBeforeLogoff},
    {&OrvaneSettings::askBeforeClearCredentials, &OrvaneSettings::setAskBeforeClearCredentials},
    {&OrvaneSettings::askBeforeDeleteConnection, &OrvaneSettings::setAskBeforeDeleteConnection},
};

std::string closingText(const OrvaneSettings& settings) {
  if (settings.askBeforeCloseSession()) return orvane::localizedText("SettingsController.Closing.Ask");
  return settings.logoffOnQuit() ? orvane::localizedText("SettingsController.Closing.Logoff")
                                 : orvane::localizedText("SettingsController.Closing.Disconnect");
}

}  // namespace

SettingsWindowController::SettingsWindowController(OrvaneSettings& settings, orvane::WindowHost& windows)
    : _settings(settings), _windows(windows) {}

void SettingsWindowController::setChecked(Box box, bool isChecked) {
  _isChecked[static_cast<size_t>(box)] = isChecked;
  changed();
}

void SettingsWindowController::setActionOnResolutionChange(int32_t index) {
  _actionOnResolutionChange = index;
  changed();
}

void SettingsWindowController::printSettings() {
  _settings.load();
  for (size_t i = 0; i < kBoxCount; ++i) _isChecked[i] = (_settings.*kBoxes[i].value)();
  _actionOnResolutionChange = _settings.actionOnResolutionChange();
  _closingLabel = closingText(_settings);
  changed();
}

void SettingsWindowController::scanAndSaveSettings() {
  _settings.load();
  for (size_t i = 0; i < kBoxCount; ++i) (_settings.*kBoxes[i].setValue)(_isChecked[i]);
  _settings.setActionOnResolutionChange(_actionOnResolutionChange);
  orvane::switchLogging(_settings.neededToLog());
  _settings.save();
}

void SettingsWindowController::onDoneClick() {
  scanAndSaveSettings();
  _windows.hide(orvane::AuxiliaryWindow::kSettings);
}

void SettingsWindowController::onCancelClick() { _windows.hide(orvane::AuxiliaryWindow::kSettings); }

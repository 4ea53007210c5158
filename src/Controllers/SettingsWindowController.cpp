#include "Controllers/SettingsWindowController.h"

#include "OrvaneCommon/LocalizedText.h"
#include "OrvaneCommon/OvULog.h"

namespace {

using Box = SettingsWindowController::Box;

struct BoxRow {
  Box box;
  bool (OrvaneSettings::*value)() const;
  void (OrvaneSettings::*setValue)(bool);
};

constexpr BoxRow kBoxes[] = {
    {Box::kShowTutorialOnStart, &OrvaneSettings::showTutorialOnStart, &OrvaneSettings::setShowTutorialOnStart},
    {Box::kLogging, &OrvaneSettings::neededToLog, &OrvaneSettings::setNeededToLog},
    {Box::kAdaptiveGraphics, &OrvaneSettings::enableAdaptiveGraphics, &OrvaneSettings::setEnableAdaptiveGraphics},
    {Box::kFullscreenInMaximizedWindow, &OrvaneSettings::fullscreenInMaximizedWindow,
     &OrvaneSettings::setFullscreenInMaximizedWindow},
    {Box::kForceDisableSeamless, &OrvaneSettings::forceDisableSeamless, &OrvaneSettings::setForceDisableSeamless},
    {Box::kTranslateCtrlClickToRightClick, &OrvaneSettings::translateCtrlLeftClickToRightClick,
     &OrvaneSettings::setTranslateCtrlLeftClickToRightClick},
    {Box::kAskBeforeCloseSession, &OrvaneSettings::askBeforeCloseSession, &OrvaneSettings::setAskBeforeCloseSession},
    {Box::kAskBeforeLogoff, &OrvaneSettings::askBeforeLogoff, &OrvaneSettings::setAskBeforeLogoff},
    {Box::kAskBeforeClearCredentials, &OrvaneSettings::askBeforeClearCredentials,
     &OrvaneSettings::setAskBeforeClearCredentials},
    {Box::kAskBeforeDeleteConnection, &OrvaneSettings::askBeforeDeleteConnection,
     &OrvaneSettings::setAskBeforeDeleteConnection},
};

std::string closingText(const OrvaneSettings& settings) {
  if (settings.askBeforeCloseSession()) return orvane::localizedText("SettingsController.Closing.Ask");
  return settings.logoffOnQuit() ? orvane::localizedText("SettingsController.Closing.Logoff")
                                 : orvane::localizedText("SettingsController.Closing.Disconnect");
}

}  // namespace

SettingsWindowController::SettingsWindowController(OrvaneSettings& settings, orvane::WindowHost& windows,
                                                   orvane::Autostart& autostart)
    : _settings(settings), _windows(windows), _autostart(autostart) {}

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
  for (const BoxRow& row : kBoxes) _isChecked[static_cast<size_t>(row.box)] = (_settings.*row.value)();
  _actionOnResolutionChange = _settings.actionOnResolutionChange();
  _closingLabel = closingText(_settings);
  _startedAtLogin = _autostart.isEnabled();
  _isChecked[static_cast<size_t>(Box::kStartAtLogin)] = _startedAtLogin;
  changed();
}

void SettingsWindowController::scanAndSaveSettings() {
  _settings.load();
  for (const BoxRow& row : kBoxes) (_settings.*row.setValue)(isChecked(row.box));
  _settings.setActionOnResolutionChange(_actionOnResolutionChange);
  orvane::switchLogging(_settings.neededToLog());
  _settings.save();
  if (isChecked(Box::kStartAtLogin) != _startedAtLogin) _autostart.setEnabled(!_startedAtLogin);
}

void SettingsWindowController::onDoneClick() {
  scanAndSaveSettings();
  _windows.hide(orvane::AuxiliaryWindow::kSettings);
}

void SettingsWindowController::onCancelClick() { _windows.hide(orvane::AuxiliaryWindow::kSettings); }

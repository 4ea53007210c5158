#pragma once

#include <cstdint>
#include <string>

#include "Controllers/Surface.h"
#include "OrvaneCommon/OrvaneSettings.h"
#include "Platform/Autostart.h"
#include "Platform/WindowHost.h"

/// The window of preferences: what its controls show reaches the preferences, and the desktop, with Done. Main thread
/// only.
class SettingsWindowController : public orvane::Surface {
 public:
  enum class Box {
    kShowTutorialOnStart,
    kLogging,
    kAdaptiveGraphics,
    kFullscreenInMaximizedWindow,
    kForceDisableSeamless,
    kTranslateCtrlClickToRightClick,
    kAskBeforeCloseSession,
    kAskBeforeLogoff,
    kAskBeforeClearCredentials,
    kAskBeforeDeleteConnection,
    kStartAtLogin,  ///< no preference of ours, but the desktop's
  };
  static constexpr size_t kBoxCount = 11;

  /// None is owned.
  SettingsWindowController(OrvaneSettings& settings, orvane::WindowHost& windows, orvane::Autostart& autostart);

  /// Loads what the controls stand for and shows it.
  void setupSettingsWindow() { printSettings(); }

  bool isChecked(Box box) const { return _isChecked[static_cast<size_t>(box)]; }
  void setChecked(Box box, bool isChecked);
  /// What a session does after a change of the resolution, by its index in the pop-up.
  int32_t actionOnResolutionChange() const { return _actionOnResolutionChange; }
  void setActionOnResolutionChange(int32_t index);
  /// What becomes of sessions when the program quits.
  const std::string& closingLabel() const { return _closingLabel; }

  void onDoneClick();
  void onCancelClick();

 private:
  void printSettings();
  void scanAndSaveSettings();

  OrvaneSettings& _settings;
  orvane::WindowHost& _windows;
  orvane::Autostart& _autostart;
  bool _startedAtLogin = false;  // as it was when shown
  bool _isChecked[kBoxCount] = {};
  int32_t _actionOnResolutionChange = 0;
  std::string _closingLabel{};
};

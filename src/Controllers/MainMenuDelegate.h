#pragma once

/// Does what the main menu asks for.
class MainMenuDelegate {
 public:
  virtual ~MainMenuDelegate() = default;
  virtual void mainMenuWantsShowSettingsWindow() = 0;
  virtual void mainMenuWantsShowAboutWindow() = 0;
  virtual void mainMenuWantsSwitchToDiMode() = 0;
  virtual void mainMenuWantsRefreshApplicationList() = 0;
  virtual void mainMenuWantsLogout() = 0;
  virtual void mainMenuWantsToggleSidePanel() = 0;
};

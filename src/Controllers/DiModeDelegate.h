#pragma once

#include <functional>
#include <memory>

class AppItem;
class OvFarm;

/// Does what the status menu asks for.
class DiModeDelegate {
 public:
  using LogoutBlock = std::function<void(bool isConfirmed, bool isBoxChecked)>;

  virtual ~DiModeDelegate() = default;
  virtual void diModeWantsConnectToFarm(const std::shared_ptr<OvFarm>& farm) = 0;
  virtual void diModeWantsCancelConnect() = 0;
  virtual void diModeWantsLaunchApp(const std::shared_ptr<AppItem>& item) = 0;
  virtual void diModeWantsRefreshApplicationList() = 0;
  /// `onDoneBlock` is called, at most once, when the user has been asked.
  virtual void diModeWantsLogoutWithOnDoneBlock(LogoutBlock onDoneBlock) = 0;
  virtual void diModeWantsShowSettings() = 0;
  virtual void diModeWantsShowAbout() = 0;
  virtual void diModeWantsGoToExpandedMode() = 0;
};

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "Controllers/DiModeDelegate.h"
#include "Controllers/MainQueueTimer.h"
#include "Controllers/StatusMenu.h"
#include "Controllers/Surface.h"
#include "Model/AppFolderItem.h"
#include "Model/OvFarmManager.h"
#include "Platform/StatusArea.h"

/// The program as a status item: its picture and its menu, built from the farms and the tree of applications. Exists
/// while desktop-integration mode is on. To be owned by a shared_ptr. Main thread only.
class DiModeController : public orvane::Surface, public std::enable_shared_from_this<DiModeController> {
 public:
  using Action = std::function<void()>;

  /// Shows the status item. The delegate is not owned.
  DiModeController(DiModeDelegate& delegate, orvane::StatusArea& statusArea, std::shared_ptr<orvane::Timer> timer,
                   std::shared_ptr<orvane::MainQueue> mainQueue);

  /// Rebuilds the menu's lists. The farm and the root may be null.
  void setupDiModeWithFarms(const OvFarmList& farms, const std::shared_ptr<OvFarm>& connectedFarm,
                            const std::shared_ptr<AppFolderItem>& applicationsRootFolder);
  void startProgressAnimationWithCancelBlock(Action onCancel);
  void stopProgressAnimation();
  /// Runs the action of the task, if there is one, once.
  void stopProgressAnimationAndPerformCancelBlock();
  /// The connection is gone.
  void logoutFromCurrentFarm();

  /// The menu as it reads now: the fixed entries, and behind a separator the connected farm's folders with their
  /// applications.
  const std::vector<StatusMenuItem>& menu() const { return _diModeMenu; }
  const std::shared_ptr<OvFarm>& currentFarm() const { return _currentFarm; }
  bool isAnimating() const { return _animationTimer.isValid(); }

  /// A click on an item of the menu, or of a copy that a desktop still shows: what the menu has disabled or lost by now
  /// does nothing.
  void onClick(const StatusMenuItem& item);
  void onFarmClick(const std::shared_ptr<OvFarm>& farm) { _delegate.diModeWantsConnectToFarm(farm); }
  void onApplicationClick(const std::shared_ptr<AppItem>& item) { _delegate.diModeWantsLaunchApp(item); }
  void onExpandedViewClick() { _delegate.diModeWantsGoToExpandedMode(); }
  void onRefreshApplicationsClick() { _delegate.diModeWantsRefreshApplicationList(); }
  void onLogoutClick();
  void onCancelConnectClick() { _delegate.diModeWantsCancelConnect(); }
  void onSettingsClick() { _delegate.diModeWantsShowSettings(); }
  void onAboutClick() { _delegate.diModeWantsShowAbout(); }

 private:
  void setApplications(const std::shared_ptr<AppFolderItem>& rootFolder);
  void enableMenuItems(bool isEnabled, const std::shared_ptr<OvFarm>& farm);
  StatusMenuItem& fixedItem(StatusMenuAction action);
  StatusMenuItem& connectionsList() { return _diModeMenu.front(); }
  bool hasConnectedFarmItem() const;
  bool isEnabledNow(const StatusMenuItem& item);
  void updatePicture();

  DiModeDelegate& _delegate;
  const std::unique_ptr<orvane::StatusItem> _statusBarItem;
  std::shared_ptr<OvFarm> _currentFarm{};
  Action _onCancelBlock{};
  orvane::MainQueueTimer _animationTimer;
  int32_t _currentPictureNumber = 1;
  std::vector<StatusMenuItem> _diModeMenu;
};

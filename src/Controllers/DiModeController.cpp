#include "Controllers/DiModeController.h"

#include <algorithm>
#include <utility>

#include "OrvaneCommon/LocalizedText.h"

using orvane::localizedText;

namespace {

constexpr const char* kIdlePicture = "DI_Mode-Icon_Wait";
constexpr const char* kOpenMenuPicture = "DI_Mode-Icon_Active-White";
constexpr const char* kAnimationPicture = "DI_Mode-Icon_State";
constexpr int32_t kAnimationPictures = 8;
constexpr std::chrono::milliseconds kAnimationPeriod{500};

std::vector<StatusMenuItem> fixedEntries() {
  using enum StatusMenuAction;
  return {
      {.title = localizedText("DiMode.Menu.Connections")},
      {.title = localizedText("DiMode.Menu.ExpandedView"), .action = kExpandedView},
      {.title = localizedText("DiMode.Menu.Refresh"), .action = kRefresh},
      {.title = localizedText("DiMode.Menu.Logout"), .action = kLogout},
      {.title = localizedText("DiMode.Menu.CancelConnect"), .action = kCancelConnect},
      {.title = localizedText("DiMode.Menu.Settings"), .action = kSettings},
      {.title = localizedText("DiMode.Menu.About"), .action = kAbout},
  };
}

bool isBackFolder(const AppItem& item) {
  return item.isFolder() && static_cast<const AppFolderItem&>(item).isBackFolder();
}

// Two levels under the farm: folders, then their applications. An application beside the folders starts from there;
// what lies deeper is reached in the expanded view alone.
std::vector<StatusMenuItem> applicationItems(const AppFolderItem::Items& items, bool opensFolders) {
  std::vector<StatusMenuItem> entries;
  entries.reserve(items.size());
  for (const auto& item : items) {
    if (isBackFolder(*item)) continue;
    StatusMenuItem& entry = entries.emplace_back();
    entry.title = item->displayName();
    if (opensFolders && item->isFolder()) {
      entry.submenu = applicationItems(static_cast<const AppFolderItem&>(*item).appItems(), false);
    } else if (item->isFolder()) {
      entry.isEnabled = false;
    } else {
      entry.action = StatusMenuAction::kLaunchApplication;
      entry.item = item;
    }
  }
  return entries;
}

}  // namespace

DiModeController::DiModeController(DiModeDelegate& delegate, orvane::StatusArea& statusArea,
                                   std::shared_ptr<orvane::Timer> timer, std::shared_ptr<orvane::MainQueue> mainQueue)
    : _delegate(delegate),
      _statusBarItem(statusArea.addItem()),
      _animationTimer(std::move(timer), std::move(mainQueue)),
      _diModeMenu(fixedEntries()) {
  _statusBarItem->setToolTip(localizedText("ProductName.Orvane"));
  _statusBarItem->setPicture(kIdlePicture);
  _statusBarItem->setAlternatePicture(kOpenMenuPicture);
  logoutFromCurrentFarm();
}

void DiModeController::setupDiModeWithFarms(const OvFarmList& farms, const std::shared_ptr<OvFarm>& connectedFarm,
                                            const std::shared_ptr<AppFolderItem>& applicationsRootFolder) {
  auto& farmItems = connectionsList().submenu;
  farmItems.clear();
  for (const auto& farm : farms) {
    farmItems.push_back({.title = farm->name(), .action = StatusMenuAction::kConnectToFarm, .farm = farm});
  }
  _currentFarm = connectedFarm;
  setApplications(applicationsRootFolder);
  enableMenuItems(!isAnimating(), _currentFarm);  // a task that runs goes on
}

bool DiModeController::hasConnectedFarmItem() const {
  return std::ranges::any_of(_diModeMenu, &StatusMenuItem::isSeparator);
}

void DiModeController::setApplications(const std::shared_ptr<AppFolderItem>& rootFolder) {
  if (!rootFolder || !_currentFarm) {
    if (hasConnectedFarmItem()) _diModeMenu.resize(_diModeMenu.size() - 2);  // with its separator
    return;
  }
  if (!hasConnectedFarmItem()) {
    _diModeMenu.push_back({.isSeparator = true});
    _diModeMenu.push_back({.title = _currentFarm->name()});
  }
  _diModeMenu.back().submenu = applicationItems(rootFolder->appItems(), true);
}

StatusMenuItem& DiModeController::fixedItem(StatusMenuAction action) {
  return *std::ranges::find(_diModeMenu, action, &StatusMenuItem::action);
}

void DiModeController::enableMenuItems(bool isEnabled, const std::shared_ptr<OvFarm>& farm) {
  fixedItem(StatusMenuAction::kRefresh).isEnabled = isEnabled && farm;
  fixedItem(StatusMenuAction::kLogout).isEnabled = isEnabled && farm;
  connectionsList().isEnabled = isEnabled && !connectionsList().submenu.empty();
  fixedItem(StatusMenuAction::kExpandedView).isEnabled = isEnabled;
  fixedItem(StatusMenuAction::kCancelConnect).isEnabled = isAnimating();
  changed();
}

void DiModeController::startProgressAnimationWithCancelBlock(Action onCancel) {
  _onCancelBlock = std::move(onCancel);
  _currentPictureNumber = 1;
  _animationTimer.startRepeating(kAnimationPeriod, [this] { updatePicture(); });
  enableMenuItems(false, _currentFarm);
}

void DiModeController::updatePicture() {
  if (_currentPictureNumber > kAnimationPictures) _currentPictureNumber = 1;
  _statusBarItem->setPicture(kAnimationPicture + std::to_string(_currentPictureNumber));
  ++_currentPictureNumber;
}

void DiModeController::stopProgressAnimation() {
  _onCancelBlock = nullptr;
  _animationTimer.invalidate();
  _statusBarItem->setPicture(kIdlePicture);
  enableMenuItems(true, _currentFarm);
}

void DiModeController::stopProgressAnimationAndPerformCancelBlock() {
  if (const Action onCancel = std::exchange(_onCancelBlock, nullptr)) onCancel();
  stopProgressAnimation();
}

void DiModeController::logoutFromCurrentFarm() {
  _currentFarm.reset();
  setApplications(nullptr);
  enableMenuItems(!isAnimating(), nullptr);
}

void DiModeController::onLogoutClick() {
  _delegate.diModeWantsLogoutWithOnDoneBlock([self = weak_from_this()](bool isConfirmed, bool) {
    const auto controller = self.lock();
    if (controller && isConfirmed) controller->logoutFromCurrentFarm();
  });
}

bool DiModeController::isEnabledNow(const StatusMenuItem& item) {
  switch (item.action) {
    case StatusMenuAction::kNone:
      return false;
    case StatusMenuAction::kConnectToFarm:
      return connectionsList().isEnabled;
    case StatusMenuAction::kLaunchApplication:
      return hasConnectedFarmItem();
    default:
      return fixedItem(item.action).isEnabled;
  }
}

// The item may stand in the menu that a click rebuilds, so what it carries is held meanwhile.
void DiModeController::onClick(const StatusMenuItem& item) {
  if (!isEnabledNow(item)) return;
  switch (item.action) {
    case StatusMenuAction::kNone:
      return;
    case StatusMenuAction::kConnectToFarm:
      return onFarmClick(std::shared_ptr(item.farm));
    case StatusMenuAction::kLaunchApplication:
      return onApplicationClick(std::shared_ptr(item.item));
    case StatusMenuAction::kExpandedView:
      return onExpandedViewClick();
    case StatusMenuAction::kRefresh:
      return onRefreshApplicationsClick();
    case StatusMenuAction::kLogout:
      return onLogoutClick();
    case StatusMenuAction::kCancelConnect:
      return onCancelConnectClick();
    case StatusMenuAction::kSettings:
      return onSettingsClick();
    case StatusMenuAction::kAbout:
      return onAboutClick();
  }
}

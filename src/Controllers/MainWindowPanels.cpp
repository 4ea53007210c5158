// The main surface's own parts: side panel, welcome flow, tutorial, and what is enabled; and how a link clears them.

#include <utility>

#include "Controllers/MainWindowController.h"
#include "Links/OvUrlScheme.h"
#include "Orchestration/OvUrlSchemeHandlerImpl.h"
#include "OrvaneCommon/LocalizedText.h"
#include "OrvaneCommon/OvUThreads.h"
#include "Support/OvException.h"
#include "Support/OvWriteLog.h"

void MainWindowController::processURLScheme(const std::string& text) {
  bool isTakenOver = false;
  OvU_ExecuteOnMainQueueSync(*_desktop.mainQueue, [&] { isTakenOver = clearTheStageForLink(); });
  if (!isTakenOver) return;
  try {
    OvUrlSchemeHandlerImpl handler(farmManager(), *this);
    OvUrlScheme(&handler).parseURL(text);
  } catch (const OvException& exception) {
    OvWriteLog(2, "%s: Autodetect Error:%s", __func__, exception.what());
    _desktop.mainQueue->post([self = weak_from_this(), message = std::string(exception.what())] {
      if (const auto controller = self.lock()) controller->showAlertWithMessage(message);
    });
  }
}

bool MainWindowController::clearTheStageForLink() {
  if (_welcomeScreen->isInProgress()) {
    OvWriteLog(4, "%s: WelcomeScreen is already configuring new connection", "processURLScheme");
    return false;
  }
  if (isInDiMode()) switchToNormalMode();
  hideAllViewsAndWindows();
  if (_desktop.windows->isMainWindowMiniaturized()) _desktop.windows->deminiaturizeMainWindow();
  return true;
}

void MainWindowController::urlSchemeHandlerDidReceiveAutodetectURL(const std::string& url,
                                                                   const std::string& farmGUID) {
  _desktop.mainQueue->post([self = weak_from_this(), url, farmGUID] {
    const auto controller = self.lock();
    if (!controller) return;
    controller->showWelcomeScreenInMode(WelcomePlacement::kWholeWindow, url, farmGUID, WelcomeScreenMode::kLink);
  });
}

void MainWindowController::hideAllViewsAndWindows() {
  const std::optional<Window> sheet = _desktop.windows->attachedSheet();
  if (sheet) hideAuxiliaryWindow(*sheet);
  if (const auto modal = _desktop.windows->modalWindow()) _desktop.windows->stopModal(*modal);
  // It may lie under a run, and nobody could answer it once its controller is reset.
  if (_modalSessionForCurrentModalWindow) endModalSession(*_modalSessionForCurrentModalWindow);
  _confirmWindow.resetContentWithBlockPerform(sheet.has_value());
  _progress.stopProgressAndPerformCancelBlock();
  _inputCredentials.resetContentWithBlockPerform(sheet.has_value());
  _chooseLocation.resetContentWithBlockPerform(sheet.has_value());
  removeWelcomeScreen();
  _productUpdate.resetContentWithBlockPerform(sheet.has_value());
  _alert.dismiss();
  _tutorial.cancelStartupTips();
  hideTutorial();
}

void MainWindowController::showWelcomeScreenInMode(WelcomePlacement placement, std::optional<std::string> url,
                                                   std::optional<std::string> farmGUID, WelcomeScreenMode mode) {
  if (placement == WelcomePlacement::kWholeWindow) {
    closeSidePanelAnimated(false);
    _isToolbarVisible = false;
    _windowTitle.clear();
    setMainMenuItemsEnabled(false);
  }
  _welcomePlacement.reset();
  _welcomeScreen->setupWelcomeScreenWithURL(std::move(url), std::move(farmGUID), mode);
  _welcomePlacement = placement;
  changed();
  _welcomeScreen->setFocused();
}

void MainWindowController::closeWelcomeScreen() {
  const bool filledTheWindow = removeWelcomeScreen();
  if (filledTheWindow && farmManager().farms().size() <= 1 && _settings.showTutorialOnStart()) {
    showTutorialWithFinishBlock([this] { startAutolaunchedApplication(); });
  }
}

// Whether it filled the window. Nothing of it is left, so that nobody stays before an empty page.
bool MainWindowController::removeWelcomeScreen() {
  const bool filledTheWindow = _welcomePlacement == WelcomePlacement::kWholeWindow;
  if (filledTheWindow) {
    _isToolbarVisible = true;
    setMainMenuItemsEnabled(true);
  }
  _welcomeScreen->resetContent();
  _welcomePlacement.reset();
  updateToolbarAndWindowTitlesForFarm(_currentFarm.get());
  return filledTheWindow;
}

void MainWindowController::welcomeScreenDoneWithConnectedFarm(const std::shared_ptr<OvFarm>& farm,
                                                              const std::shared_ptr<OvLocation>& location,
                                                              const std::shared_ptr<AppFolderItem>& receivedApps) {
  _shouldLaunchApplicationOnConnectToAutolaunchedFarm = false;  // consumed by this list
  connectToFarmDidSucceedForFarm(farm, location);
  refreshApplicationTableWithFolders(receivedApps);
  closeSidePanelAnimated(true);
  closeWelcomeScreen();
}

void MainWindowController::welcomeScreenCancelWithError(const OvError* error) {
  const std::optional<OvError> told = error == nullptr ? std::nullopt : std::optional(*error);
  closeWelcomeScreen();
  if (told) showUserNotificationWithTitle({}, told->description);
}

void MainWindowController::welcomeScreenWantsShowNotificationWithTitle(const std::string& title,
                                                                       const std::string& text) {
  showUserNotificationWithTitle(title, text);
}

void MainWindowController::showTutorialWithFinishBlock(std::function<void()> onFinish) {
  _tutorial.setupTutorialWithFinishBlock([this, onFinish = std::move(onFinish)] {
    hideTutorial();
    onFinish();
  });
  disableUserInteractionsWithGraying(false);
  _isTutorialShown = true;
  changed();
}

void MainWindowController::hideTutorial() {
  if (!std::exchange(_isTutorialShown, false)) return;
  enableUserInteractions();
}

void MainWindowController::connectionsListConnectionDidClick(const std::shared_ptr<OvFarm>& farm) {
  connectToFarm(farm);
}

void MainWindowController::connectionsListEditConnectionDidClick(const std::shared_ptr<OvFarm>& farm) {
  _connectionSettings->setupSettingsForFarm(farm, farmManager().farms().size() == 1, areAdvancedKeysHeld(), false);
  showConnectionSettingsView(true);
}

void MainWindowController::connectionsListAddConnectionDidClick() {
  if (areAdvancedKeysHeld()) {
    _connectionSettings->setupSettingsForManualFarm();
    showConnectionSettingsView(true);
  } else {
    showWelcomeScreenInMode(WelcomePlacement::kSidePanel, {}, {}, WelcomeScreenMode::kAddConnection);
  }
}

bool MainWindowController::areAdvancedKeysHeld() const {
  constexpr uint32_t kBoth = orvane::ModifierKeys::kShift | orvane::ModifierKeys::kControl;
  return (_desktop.modifierKeys->held() & kBoth) == kBoth;
}

void MainWindowController::connectionSettingsDidFinishEditing(const std::shared_ptr<OvFarm>& farm, int farmState) {
  constexpr int kUnchanged = -1;
  showConnectionSettingsView(false);
  if (farmState == kUnchanged) return;
  const auto change = static_cast<FarmChange>(farmState);
  if (change == FarmChange::kAdded) {
    farmManager().addFarm(farm);
  } else if (change == FarmChange::kRemoved) {
    farmManager().removeFarm(farm);
  } else {
    farmManager().notifyOnFarmChange(farm);
  }
  if ((change == FarmChange::kAdded || change == FarmChange::kChanged) && farm->doAutoLaunch()) {
    farmManager().setAutolaunchedFarm(farm);
  }
  farmManager().save();
}

void MainWindowController::openSidePanel() {
  focus(MainWindowFocus::kNothing);
  _isSidePanelOpen = true;
  _isSidePanelAnimated = true;
  disableUserInteractionsWithGraying(true);
  _isConnectionsItemEnabled = true;
  _mainMenu.setEnabled(MainMenuController::Item::kToggleSidePanel, true);
  changed();
}

void MainWindowController::closeSidePanelAnimated(bool isAnimated) {
  _isSidePanelOpen = false;
  _isSidePanelAnimated = isAnimated;
  enableUserInteractions();
  _applicationTable.makeFirstResponder();
}

void MainWindowController::toggleSidePanel() {
  if (_isSidePanelOpen) {
    closeSidePanelAnimated(true);
  } else {
    openSidePanel();
  }
}

void MainWindowController::showConnectionSettingsView(bool isShown) {
  _isConnectionSettingsViewShown = isShown;
  changed();
}

void MainWindowController::setMainMenuItemsEnabled(bool isEnabled) {
  using Item = MainMenuController::Item;
  _mainMenu.setEnabled(Item::kToggleSidePanel, isEnabled);
  _mainMenu.setEnabled(Item::kDiMode, isEnabled);
  for (const Item item : {Item::kLogout, Item::kRefresh}) _mainMenu.setEnabled(item, isEnabled && _currentFarm);
}

void MainWindowController::setToolbarItemsEnabled(bool isEnabled) {
  setMainMenuItemsEnabled(isEnabled);
  _isConnectionsItemEnabled = isEnabled;
  _isLogoutItemEnabled = _isRefreshItemEnabled = isEnabled && _currentFarm;
  changed();
}

void MainWindowController::setLogoutAndRefreshEnabled(bool isEnabled) {
  using Item = MainMenuController::Item;
  _isLogoutItemEnabled = _isRefreshItemEnabled = isEnabled;
  for (const Item item : {Item::kLogout, Item::kRefresh}) _mainMenu.setEnabled(item, isEnabled);
  changed();
}

void MainWindowController::enableUserInteractions() {
  _cover = Cover::kNone;
  setToolbarItemsEnabled(true);
}

void MainWindowController::disableUserInteractionsWithGraying(bool isGrey) {
  _cover = isGrey ? Cover::kGrey : Cover::kClear;
  setToolbarItemsEnabled(false);
}

void MainWindowController::updateToolbarAndWindowTitlesForFarm(const OvFarm* farm) {
  _activeConnectionLabel = farm == nullptr ? std::string() : farm->name();
  if (_welcomePlacement != WelcomePlacement::kWholeWindow) {
    _windowTitle = farm == nullptr ? orvane::localizedText("ProductName.Orvane") : farm->name();
  }
  changed();
}

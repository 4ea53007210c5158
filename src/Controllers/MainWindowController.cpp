#include "Controllers/MainWindowController.h"

#include <algorithm>
#include <utility>

std::shared_ptr<MainWindowController> MainWindowController::create(
    orvane::Desktop desktop, std::shared_ptr<OvBrokerClientController> orchestration, OrvaneSettings& settings,
    MainMenuController& mainMenu) {
  const std::shared_ptr<MainWindowController> controller(
      new MainWindowController(std::move(desktop), std::move(orchestration), settings, mainMenu));
  controller->awakeFromNib();
  return controller;
}

MainWindowController::MainWindowController(orvane::Desktop desktop,
                                           std::shared_ptr<OvBrokerClientController> orchestration,
                                           OrvaneSettings& settings, MainMenuController& mainMenu)
    : _desktop(std::move(desktop)),
      _settings(settings),
      _mainMenu(mainMenu),
      _brokerClientController(std::move(orchestration)),
      _applicationTable(*this),
      _productUpdate(*_desktop.windows, _desktop.opener, _desktop.globalQueue),
      _chooseLocation(_desktop.timer, _desktop.mainQueue),
      _alert(_desktop.windows, Window::kAlert),
      _tutorial(settings),
      _settingsWindow(settings, *_desktop.windows, *_desktop.autostart),
      _aboutWindow(_desktop.opener, _desktop.globalQueue) {}

MainWindowController::~MainWindowController() = default;

void MainWindowController::awakeFromNib() {
  _brokerEvents.emplace(weak_from_this(), _desktop.mainQueue);
  farmManager().addFarmObserver(shared_from_this());
  createAuxiliaryWindowsAndViews();
  disconnectFromCurrentFarm();
  enableUserInteractions();
}

// Those that are not members by value need this object to be owned already.
void MainWindowController::createAuxiliaryWindowsAndViews() {
  _welcomeScreen = WelcomeScreenViewController::create(_brokerClientController, *this, _productUpdate, _desktop.timer,
                                                       _desktop.mainQueue);
  _connectionsList = ConnectionsListViewController::create(farmManager(), *this, _desktop.mainQueue);
  _connectionSettings = ConnectionSettingsViewController::create(farmManager(), *this, _settings, _desktop.mainQueue);
}

void MainWindowController::showMainWindow() {
  const bool startsInDiMode = _settings.diMode();
  if (startsInDiMode) {
    switchToDiMode();
  } else {
    showWindow();
  }
  if (farmManager().farms().empty() && !startsInDiMode) {
    showWelcomeScreenInMode(WelcomePlacement::kWholeWindow, {}, {}, WelcomeScreenMode::kFirstStart);
  } else if (_settings.showTutorialOnStart() && !startsInDiMode) {
    showTutorialWithFinishBlock([this] { connectToAutolaunchedFarm(); });
  } else {
    connectToAutolaunchedFarm();
  }
}

void MainWindowController::showWindow() { _desktop.windows->showMainWindow(); }

void MainWindowController::reopen() {
  if (_settings.diMode()) return;
  if (_desktop.windows->isMainWindowMiniaturized()) _desktop.windows->deminiaturizeMainWindow();
  showWindow();
}

void MainWindowController::windowWillClose() {
  if (!isInDiMode()) _desktop.process->terminate();
}

orvane::Screens::Size MainWindowController::windowWillResize(orvane::Screens::Size size) const {
  const orvane::Screens::Size screen = _desktop.screens->visibleArea();
  return {std::min(size.width, screen.width / 2), std::min(size.height, screen.height)};
}

void MainWindowController::farmStateDidChange(FarmChange state, const std::shared_ptr<OvFarm>& farm) {
  _desktop.mainQueue->post([self = weak_from_this(), state, farm] {
    if (const auto controller = self.lock()) controller->applyFarmChange(state, farm);
  });
}

void MainWindowController::applyFarmChange(FarmChange state, const std::shared_ptr<OvFarm>& farm) {
  if (state == FarmChange::kAllRemoved) {
    logoutFromCurrentFarmWithSessionsDisconnecting(false);
    return;
  }
  if (!farm || farm != _currentFarm) return;
  if (state == FarmChange::kChanged) updateToolbarAndWindowTitlesForFarm(farm.get());
  if (state == FarmChange::kRemoved) logoutFromCurrentFarmWithSessionsDisconnecting(false);
}

// The current connection: made, refreshed, used for launches, and ended.

#include <algorithm>
#include <utility>

#include "Controllers/MainWindowController.h"
#include "Orchestration/BrokerControllerError.h"
#include "OrvaneCommon/LocalizedText.h"
#include "OrvaneCommon/TextFormat.h"
#include "Support/OvWriteLog.h"

void MainWindowController::connectToAutolaunchedFarm() {
  const std::shared_ptr<OvFarm> farm = farmManager().autolaunchedFarm();
  if (!farm) return;
  connectToFarm(farm);  // clears the flag
  _shouldLaunchApplicationOnConnectToAutolaunchedFarm = true;
}

void MainWindowController::connectToFarm(const std::shared_ptr<OvFarm>& farm) {
  _shouldLaunchApplicationOnConnectToAutolaunchedFarm = false;
  if (!farm->credentials().needToSave()) {
    farm->credentials().clear();
    farmManager().save();
  }
  if (const auto location = farm->defaultLocation()) {
    connectToFarmAtLocation(farm, location);
    return;
  }
  showChooseLocationForFarm(farm, [this, farm](const std::shared_ptr<OvLocation>& location) {
    if (location) connectToFarmAtLocation(farm, location);
  });
}

void MainWindowController::connectToFarmAtLocation(const std::shared_ptr<OvFarm>& farm,
                                                   const std::shared_ptr<OvLocation>& location) {
  OvBrokerClientController::configureBrokerClientOfFarm(*farm, &farm->credentials(), farm->anonymousLogin(),
                                                        location.get());
  const auto task = _brokerEvents->start([&](const OvBrokerClientController::Delegate& delegate) {
    return _brokerClientController->connectToFarm(farm, location, delegate);
  });
  startProgressAnimationWithCancelBlock([task] { task->cancel(); });
}

void MainWindowController::connectToFarmDidSucceedForFarm(const std::shared_ptr<OvFarm>& farm,
                                                          const std::shared_ptr<OvLocation>& location) {
  _currentFarm = farm;
  _connectionsList->setConnectedFarm(farm);
  _currentLocation = location;
  farmManager().save();
}

void MainWindowController::brokerClientControllerDidConnectToFarm(const std::shared_ptr<OvFarm>& farm,
                                                                  const std::shared_ptr<OvLocation>& location) {
  connectToFarmDidSucceedForFarm(farm, location);
}

void MainWindowController::brokerClientControllerDidFailConnect(const OvError& error,
                                                                const std::shared_ptr<OvFarm>& farm) {
  stopProgressAnimation();
  if (error.code == static_cast<int>(BrokerControllerError::kInstallsUpdate)) return;
  if (farm && farm == _currentFarm) disconnectFromCurrentFarm();
  if (error.code == static_cast<int>(BrokerControllerError::kNoLocationSelected)) return;
  showAlertWithMessage(error.description);
}

void MainWindowController::brokerClientControllerDidReceiveApplicationList(
    const std::shared_ptr<AppFolderItem>& rootFolder) {
  refreshApplicationTableWithFolders(_currentFarm ? rootFolder : nullptr);  // its farm may have been removed meanwhile
  stopProgressAnimation();
  closeSidePanelAnimated(true);
  if (std::exchange(_shouldLaunchApplicationOnConnectToAutolaunchedFarm, false)) startAutolaunchedApplication();
}

void MainWindowController::brokerClientControllerDidUpdateConnectionDescription(const std::string& description) {
  _progress.setDescription(description);
}

void MainWindowController::refreshApplicationTableWithFolders(const std::shared_ptr<AppFolderItem>& rootFolder) {
  if (isInDiMode()) _diModeController->setupDiModeWithFarms(farmManager().farms(), _currentFarm, rootFolder);
  _applicationTable.showApplications(rootFolder);
  setLogoutAndRefreshEnabled(rootFolder != nullptr);
  _applicationTable.hideSearchField();
  updateToolbarAndWindowTitlesForFarm(_currentFarm.get());
}

void MainWindowController::refreshApplicationsForCurrentFarm() {
  if (!_currentFarm) {
    OvWriteLog(2, "%s: Error: No farm to refresh.", __func__);
    return;
  }
  const auto task = _brokerEvents->start([&](const OvBrokerClientController::Delegate& delegate) {
    return _brokerClientController->getApplicationListForFarm(_currentFarm, delegate);
  });
  startProgressAnimationWithCancelBlock([task] { task->cancel(); });
}

void MainWindowController::startAutolaunchedApplication() {
  const auto root = _applicationTable.applicationsRootFolder();
  const auto items = root && _currentFarm ? root->allApplicationItems() : AppFolderItem::Items();
  const auto found = std::find_if(items.begin(), items.end(), [&](const auto& item) {
    const auto& names = _currentFarm->autoLaunchApps();
    return !item->isFolder() && std::find(names.begin(), names.end(), item->displayName()) != names.end();
  });
  if (found == items.end()) {
    OvWriteLog(4, "%s: Autolaunching: autolaunched application was not found", __func__);
    return;
  }
  OvWriteLog(4, "%s: Autolaunching: autolaunched application [%s] was found", __func__,
             (*found)->displayName().c_str());
  applicationHasBeenChoosen(*found);
}

void MainWindowController::applicationHasBeenChoosen(const std::shared_ptr<AppItem>& item) {
  if (!_currentFarm) {
    OvWriteLog(2, "%s: No farm selected", __func__);
    return;
  }
  if (!_currentLocation) {
    OvWriteLog(2, "%s: No location selected", __func__);
    return;
  }
  OvWriteLog(4, "%s: Application with name [%s] and display name [%s] was selected", __func__, item->name().c_str(),
             item->displayName().c_str());
  launchApplication(item);
}

void MainWindowController::launchApplication(const std::shared_ptr<AppItem>& item) {
  if (!_currentFarm || !_currentLocation) return;  // the status menu may be older than the end of the connection
  const auto launch = std::make_shared<std::shared_ptr<PendingTask>>();
  *launch = _brokerClientController->launchApp(
      _currentFarm, _currentLocation, item->name(),
      [self = weak_from_this(), mainQueue = _desktop.mainQueue, launch](const OvError* error) {
        mainQueue->post([self, launch, error = error == nullptr ? std::nullopt : std::optional(*error)] {
          if (!(*launch)->isRunning()) return;
          if (const auto controller = self.lock()) controller->launchDidComplete(error);
        });
      });
  startProgressAnimationWithCancelBlock([task = *launch] { task->cancel(); });
}

void MainWindowController::launchDidComplete(const std::optional<OvError>& error) {
  stopProgressAnimation();
  if (!error) return;
  OvWriteLog(2, "%s: Launch failed: Code: [%i], Reason: [%s]", __func__, error->code, error->description.c_str());
  showAlertWithMessage(error->description);
}

void MainWindowController::diModeWantsLogoutWithOnDoneBlock(ConfirmationBlock onDoneBlock) {
  logoutFromCurrentFarmWithConfirmationBlock(std::move(onDoneBlock));
}

void MainWindowController::logoutFromCurrentFarmWithConfirmationBlock(Confirmation onDone) {
  if (!_settings.askBeforeLogoff()) {
    logoutFromCurrentFarm();
    if (onDone) onDone(true, _settings.askBeforeLogoff());
    return;
  }
  const std::string question = orvane::formatText(orvane::localizedText("ConfirmWindowController.Logout"),
                                                  {_currentFarm ? _currentFarm->name() : std::string()});
  showConfirmation(question, [this, onDone = std::move(onDone)](bool isConfirmed, bool asksAgain) {
    _settings.setAskBeforeLogoff(asksAgain);
    _settings.save();
    if (!isConfirmed) return;
    logoutFromCurrentFarm();
    if (onDone) onDone(isConfirmed, asksAgain);
  });
}

void MainWindowController::logoutFromCurrentFarm() {
  logoutFromCurrentFarmWithSessionsDisconnecting(true);
  openSidePanel();
}

void MainWindowController::logoutFromCurrentFarmWithSessionsDisconnecting(bool disconnectsSessions) {
  if (_currentFarm) {
    _currentFarm->credentials().invalidateCredentials();
    farmManager().save();
    if (disconnectsSessions) _brokerClientController->disconnectAllOpenedSessions();
  }
  disconnectFromCurrentFarm();
}

void MainWindowController::disconnectFromCurrentFarm() {
  _currentFarm.reset();
  _connectionsList->setConnectedFarm(nullptr);
  _currentLocation.reset();
  setLogoutAndRefreshEnabled(false);
  _applicationTable.hideSearchField();
  _applicationTable.showApplications(nullptr);
  updateToolbarAndWindowTitlesForFarm(nullptr);
}

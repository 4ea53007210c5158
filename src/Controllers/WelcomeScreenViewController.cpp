#include "Controllers/WelcomeScreenViewController.h"

#include <algorithm>
#include <utility>

#include "Orchestration/BrokerControllerError.h"
#include "OrvaneCommon/LocalizedText.h"

namespace {

bool is(const OvError& error, BrokerControllerError code) { return error.code == static_cast<int>(code); }

}  // namespace

std::shared_ptr<WelcomeScreenViewController> WelcomeScreenViewController::create(
    std::shared_ptr<OvBrokerClientController> brokerClientController, WelcomeScreenDelegate& delegate,
    ProductUpdateWindowController& updateWindow, std::shared_ptr<orvane::Timer> timer,
    std::shared_ptr<orvane::MainQueue> mainQueue) {
  const std::shared_ptr<WelcomeScreenViewController> controller(new WelcomeScreenViewController(
      std::move(brokerClientController), delegate, updateWindow, std::move(timer), mainQueue));
  controller->_brokerEvents.emplace(controller, std::move(mainQueue));
  controller->farmManager().addFarmObserver(controller);
  return controller;
}

WelcomeScreenViewController::WelcomeScreenViewController(
    std::shared_ptr<OvBrokerClientController> brokerClientController, WelcomeScreenDelegate& delegate,
    ProductUpdateWindowController& updateWindow, std::shared_ptr<orvane::Timer> timer,
    std::shared_ptr<orvane::MainQueue> mainQueue)
    : _brokerClientController(std::move(brokerClientController)),
      _delegate(delegate),
      _updateWindow(updateWindow),
      _chooseLocation(std::move(timer), std::move(mainQueue)) {}

void WelcomeScreenViewController::setupWelcomeScreenWithURL(std::optional<std::string> url,
                                                            std::optional<std::string> farmGUID,
                                                            WelcomeScreenMode mode) {
  _welcomeScreenMode = mode;
  resetContent();
  const bool isManual = mode == WelcomeScreenMode::kAddConnection;
  _inputCredentials.configureButtonTitlesForManualConnect(isManual);
  _inputUrl.configureButtonTitlesForManualAdd(isManual);
  if (!url || url->empty()) return showStartPage();
  _configurationURL = std::move(url);
  _autodetectFarmGUID = std::move(farmGUID);
  startAutoConfigurationProcess();
}

// The task comes first, so that it doesn't take a dropped question for an answer and go on; the page before the
// progress, as going back from one would show the next.
void WelcomeScreenViewController::resetContent() {
  cancelTask();
  revertCurrectConfiguredFarm();
  forgetFarm();
  _configurationURL.reset();
  _autodetectFarmGUID.reset();
  showStageView(WelcomeStageView::kNone);
  _progress.stopProgressAndPerformCancelBlock();
  hideError();
}

void WelcomeScreenViewController::setFocused() { _inputUrl.setFocused(); }

bool WelcomeScreenViewController::isInProgress() const {
  return _currentStageView != WelcomeStageView::kNone && _currentStageView != WelcomeStageView::kAddress;
}

void WelcomeScreenViewController::showStageView(WelcomeStageView page) {
  _currentStageView = page;
  if (page != WelcomeStageView::kAddress) _inputUrl.resetContent();
  if (page != WelcomeStageView::kCredentials) _inputCredentials.resetContentWithBlockPerform(false);
  if (page != WelcomeStageView::kLocation) _chooseLocation.resetContentWithBlockPerform(false);
  if (page != WelcomeStageView::kConfirmation) _connectOnStartConfirmation.resetContent();
  changed();
}

void WelcomeScreenViewController::showStartPage() {
  cancelTask();
  revertCurrectConfiguredFarm();
  forgetFarm();
  _inputUrl.setupWithURL(_configurationURL.value_or(""), [this](std::optional<std::string> url) {
    if (!url) return welcomeScreenCancelledWithError(nullptr);
    _configurationURL = std::move(url);
    startAutoConfigurationProcess();
    hideError();
  });
  showStageView(WelcomeStageView::kAddress);
  _inputUrl.setFocused();
}

void WelcomeScreenViewController::transiteBack() {
  hideError();
  if (_lastWelcomeScreenStage == Stage::kAddress) return showStartPage();
  promptCredentialsWithOldCredentials(credentialsToEnterAgain(), _configuredFarm->disallowSaveCredentials(),
                                      [this](std::optional<OvCredentials> credentials) {
                                        if (!credentials) return;
                                        credentials->setCredentialsAreValid(true);  // the user isn't asked twice
                                        _configuredFarm->setCredentials(*credentials);
                                        OvBrokerClientController::configureBrokerClientOfFarm(
                                            *_configuredFarm, &*credentials, _configuredFarm->anonymousLogin(),
                                            nullptr);
                                        _isReconfigured = false;
                                        connectToCurrentFarm();
                                      });
}

void WelcomeScreenViewController::showErrorMessage(const std::string& text) {
  _inputUrl.showError(text);
  _inputCredentials.showError(text);
}

void WelcomeScreenViewController::hideError() {
  _inputUrl.hideError();
  _inputCredentials.hideError();
}

void WelcomeScreenViewController::stopProgressAnimation() { _progress.stopProgress(); }

void WelcomeScreenViewController::cancelTask() {
  if (_task) _task->cancel();
}

void WelcomeScreenViewController::startAutoConfigurationProcess() {
  configureFarm(_autodetectFarmGUID, false);
  _isReconfigured = false;
  _lastWelcomeScreenStage = Stage::kAddress;
}

void WelcomeScreenViewController::configureFarm(const std::optional<std::string>& farmGUID, bool fromConfigOnly) {
  run([&](OvBrokerClientController::Delegate delegate) {
    return _brokerClientController->configureFarmFromURL(_configurationURL.value_or(""), farmGUID, fromConfigOnly,
                                                         std::move(delegate));
  });
}

void WelcomeScreenViewController::connectToCurrentFarm() {
  run([this](OvBrokerClientController::Delegate delegate) {
    return _brokerClientController->connectToFarm(_configuredFarm, _configuredLocation, std::move(delegate));
  });
}

void WelcomeScreenViewController::connectToCurrentFarmAtLocation(const std::shared_ptr<OvLocation>& location) {
  _configuredLocation = location;
  OvBrokerClientController::configureBrokerClientOfFarm(*_configuredFarm, nullptr, false, location.get());
  connectToCurrentFarm();
}

void WelcomeScreenViewController::run(const orvane::BrokerEvents::Operation& operation) {
  cancelTask();
  _task = _brokerEvents->start(operation);
  startProgressAnimationWithTask(_task);
}

void WelcomeScreenViewController::startProgressAnimationWithTask(const std::shared_ptr<PendingTask>& task) {
  _progress.startProgressWithCancelBlock([this, task] {
    task->cancel();
    if (_currentStageView == WelcomeStageView::kProgress) transiteBack();  // else the whole flow ends
  });
  showStageView(WelcomeStageView::kProgress);
}

void WelcomeScreenViewController::chooseLocationForConfiguredFarm() {
  if (_configuredFarm->locations().empty()) {
    stopProgressAnimation();
    showStartPage();
    showErrorMessage(orvane::localizedText("WelcomeScreen.Farm.NoLocation.Message"));
    return;
  }
  _chooseLocation.setupWithFarm(
      _configuredFarm,
      [this](const std::shared_ptr<OvLocation>& location) {
        if (!location) return welcomeScreenCancelledWithError(nullptr);
        connectToCurrentFarmAtLocation(location);
      },
      true);
  showStageView(WelcomeStageView::kLocation);
}

void WelcomeScreenViewController::brokerClientControllerDidConfigureFarm(const std::shared_ptr<OvFarm>& farm,
                                                                         int status, bool farmAlreadyExists) {
  _configuredFarmBackup = farmAlreadyExists ? std::make_shared<OvFarm>(*farm) : nullptr;
  const std::shared_ptr<OvFarm> reconfiguredFarm = std::exchange(_configuredFarm, farm);
  takeCredentialsOfFarm(reconfiguredFarm.get());
  if (status == FarmConfigurationResult::kFromBroker) {
    _configuredLocation = OvLocation::location();
    connectToCurrentFarm();
    return;
  }
  storeConfiguredFarm();
  if (const auto location = _configuredFarm->defaultLocation()) {
    connectToCurrentFarmAtLocation(location);
  } else {
    chooseLocationForConfiguredFarm();
  }
}

void WelcomeScreenViewController::takeCredentialsOfFarm(const OvFarmConfiguration* reconfiguredFarm) {
  OvFarm& farm = *_configuredFarm;
  if (reconfiguredFarm != nullptr &&
      (reconfiguredFarm->anonymousLogin() || !reconfiguredFarm->credentials().isEmpty())) {
    farm.setCredentials(reconfiguredFarm->credentials());
    farm.setAnonymousLogin(reconfiguredFarm->anonymousLogin());
    OvBrokerClientController::configureBrokerClientOfFarm(farm, &farm.credentials(), farm.anonymousLogin(), nullptr);
    return;
  }
  farm.credentials().clear();
  const bool isEmail = _configurationURL && _configurationURL->find('@') != std::string::npos;
  if (isEmail) farm.credentials().setUsername(*_configurationURL);
}

void WelcomeScreenViewController::storeConfiguredFarm() {
  OvFarm& farm = *_configuredFarm;
  farm.setServerCreated(!farm.farmDBGUID().empty() && !farm.configDBGUID().empty() && !farm.configTimestamp().empty());
  farmManager().addFarm(_configuredFarm);
  // If the store has an equal one, it is that which is to be connected: what the connect learns must reach the store.
  const auto stored =
      std::ranges::find_if(farmManager().farms(), [&](const auto& candidate) { return *candidate == farm; });
  if (*stored != _configuredFarm) {
    _configuredFarm = *stored;
    _configuredFarmBackup = std::make_shared<OvFarm>(**stored);
    OvBrokerClientController::configureBrokerClientOfFarm(**stored, &(*stored)->credentials(),
                                                          (*stored)->anonymousLogin(), nullptr);
  }
  farmManager().save();
}

void WelcomeScreenViewController::brokerClientControllerDidFailFarmConfiguration(const OvError& error) {
  stopProgressAnimation();
  showStartPage();
  showErrorMessage(error.description);
}

void WelcomeScreenViewController::brokerClientControllerPromptCredentialsWithOldCredentials(
    const OvCredentials& oldCredentials, CredentialsBlock onDoneBlock, bool shouldDisallowSave,
    const OvError* authenticationError) {
  promptCredentialsWithOldCredentials(oldCredentials, shouldDisallowSave,
                                      [this, done = std::move(onDoneBlock)](std::optional<OvCredentials> credentials) {
                                        if (credentials) showStageView(WelcomeStageView::kProgress);
                                        done(std::move(credentials));
                                      });
  if (authenticationError != nullptr) showErrorMessage(authenticationError->description);
}

void WelcomeScreenViewController::promptCredentialsWithOldCredentials(const OvCredentials& oldCredentials,
                                                                      bool disallowSave,
                                                                      CredentialsBlock onCredentialsInputBlock) {
  _inputCredentials.setupWithCredentials(
      &oldCredentials, disallowSave,
      [this, onInput = std::move(onCredentialsInputBlock)](const std::optional<OvCredentials>& credentials) {
        _enteredCredentials = credentials;
        onInput(credentials);
        hideError();
        if (credentials) {
          _lastWelcomeScreenStage = Stage::kCredentials;
        } else if (_welcomeScreenMode == WelcomeScreenMode::kAddConnection) {
          welcomeScreenCancelledWithError(nullptr);
        } else {
          stopProgressAnimation();
          showStartPage();
        }
      });
  showStageView(WelcomeStageView::kCredentials);
  _inputCredentials.setFocused();
}

// The farm's, as a configuration may have come meanwhile, with what a broker has yet to take.
OvCredentials WelcomeScreenViewController::credentialsToEnterAgain() const {
  OvCredentials credentials = _configuredFarm->credentials();
  if (_enteredCredentials) {
    credentials.setUsername(_enteredCredentials->username());
    credentials.setPassword(_enteredCredentials->password());
    credentials.setDomain(_enteredCredentials->domain());
    credentials.setNeedToSave(_enteredCredentials->needToSave());
  }
  return credentials;
}

// Also without a choice the connect has the word again: it fails, or goes on without.
void WelcomeScreenViewController::brokerClientControllerPromptLocationForFarm(const std::shared_ptr<OvFarm>& farm,
                                                                              LocationBlock block) {
  _chooseLocation.setupWithFarm(
      farm,
      [this, choose = std::move(block)](std::shared_ptr<OvLocation> location) {
        showStageView(WelcomeStageView::kProgress);
        choose(std::move(location));
      },
      true);
  showStageView(WelcomeStageView::kLocation);
}

void WelcomeScreenViewController::brokerClientControllerShowUpdateWindowWithUpdateURL(
    const std::string& updateUrl, bool updateRequired, const std::string& avaliableVersion, UpdateBlock onChooseBlock) {
  _updateWindow.showUpdateWindowOnParent(orvane::WindowParent::kMainWindow, updateUrl, updateRequired, avaliableVersion,
                                         std::move(onChooseBlock));
}

void WelcomeScreenViewController::brokerClientControllerDidConnectToFarm(const std::shared_ptr<OvFarm>& farm,
                                                                         const std::shared_ptr<OvLocation>& location) {
  _configuredFarm = farm;
  _configuredLocation = location;
}

void WelcomeScreenViewController::brokerClientControllerDidFailConnect(const OvError& error,
                                                                       const std::shared_ptr<OvFarm>&) {
  if (is(error, BrokerControllerError::kConfigurationNotAssigned) && !_isReconfigured) {
    _isReconfigured = true;
    configureFarm(std::nullopt, true);
    return;
  }
  stopProgressAnimation();
  if (_configuredFarm && farmManager().containsFarm(*_configuredFarm)) {
    welcomeScreenCancelledWithError(is(error, BrokerControllerError::kNoLocationSelected) ? nullptr : &error);
    return;
  }
  showStartPage();
  if (!is(error, BrokerControllerError::kInstallsUpdate)) showErrorMessage(error.description);
}

void WelcomeScreenViewController::brokerClientControllerDidReceiveApplicationList(
    const std::shared_ptr<AppFolderItem>& rootFolder) {
  stopProgressAnimation();
  if (farmManager().farms().size() == 1) return doneWithApps(rootFolder);
  _connectOnStartConfirmation.setupConfirmationViewWithConnectionName(
      _configuredFarm->name(), _configuredFarm->doAutoLaunch(), [this, rootFolder](bool isAutolaunched) {
        const bool wasAutolaunched = _configuredFarm->doAutoLaunch();
        _configuredFarm->setDoAutoLaunch(isAutolaunched);
        if (isAutolaunched != wasAutolaunched) farmManager().setAutolaunchedFarm(_configuredFarm);
        doneWithApps(rootFolder);
      });
  showStageView(WelcomeStageView::kConfirmation);
}

void WelcomeScreenViewController::doneWithApps(const std::shared_ptr<AppFolderItem>& rootFolder) {
  _configuredFarmBackup.reset();  // what was chosen on the way stays
  const std::shared_ptr<OvFarm> farm = _configuredFarm;
  const std::shared_ptr<OvLocation> location = _configuredLocation;
  _delegate.welcomeScreenDoneWithConnectedFarm(farm, location, rootFolder);
}

void WelcomeScreenViewController::brokerClientControllerDidUpdateConnectionDescription(const std::string& description) {
  _progress.setDescription(description);
}

void WelcomeScreenViewController::brokerClientControllerShowNotificationWithTitle(const std::string& title,
                                                                                  const std::string& text) {
  _delegate.welcomeScreenWantsShowNotificationWithTitle(title, text);
}

void WelcomeScreenViewController::welcomeScreenCancelledWithError(const OvError* error) {
  revertCurrectConfiguredFarm();
  _delegate.welcomeScreenCancelWithError(error);
}

void WelcomeScreenViewController::revertCurrectConfiguredFarm() {
  if (_configuredFarm) _configuredFarm->setConfigurationEqualToFarm(_configuredFarmBackup.get());
}

void WelcomeScreenViewController::forgetFarm() {
  _configuredFarm.reset();
  _configuredLocation.reset();
  _configuredFarmBackup.reset();
  _enteredCredentials.reset();
  _lastWelcomeScreenStage = Stage::kAddress;
}

void WelcomeScreenViewController::farmStateDidChange(FarmChange state, const std::shared_ptr<OvFarm>&) {
  if (state != FarmChange::kSaved || !_configuredFarm || !_configuredFarmBackup) return;
  _configuredFarmBackup->setConfigurationEqualToFarm(_configuredFarm.get());
}

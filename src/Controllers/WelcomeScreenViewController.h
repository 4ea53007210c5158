#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Controllers/BrokerEvents.h"
#include "Controllers/ChooseLocationViewController.h"
#include "Controllers/ConnectOnStartConfirmationViewController.h"
#include "Controllers/InputCredentialsViewController.h"
#include "Controllers/InputUrlViewController.h"
#include "Controllers/ProductUpdateWindowController.h"
#include "Controllers/ProgressAnimationViewController.h"
#include "Controllers/Surface.h"
#include "Controllers/WelcomeScreenDelegate.h"

enum class WelcomeScreenMode : int32_t { kAddConnection = 0, kFirstStart = 1, kLink = 2 };

/// The page that a WelcomeScreenViewController shows; none while the flow isn't active.
enum class WelcomeStageView { kNone, kAddress, kProgress, kCredentials, kLocation, kConfirmation };

/// From an address to a connected, stored farm, by pages of which one shows at a time (docs/welcome-flow.md).
///
/// It is the delegate of the operations that it starts, of which one runs at a time. All their events arrive on the
/// main thread, that of the connected farm and location too: the model belongs to it.
///
/// Only the shown page has a callback; that of any other is dropped unanswered, which chooses nothing. The progress
/// page alone keeps its own, for the time after a prompt.
class WelcomeScreenViewController : public orvane::Surface,
                                    public OvBrokerClientControllerDelegate,
                                    public OvFarmManagerObserver,
                                    public std::enable_shared_from_this<WelcomeScreenViewController> {
 public:
  /// One that observes the farms. No pointer is null; the references outlive it.
  static std::shared_ptr<WelcomeScreenViewController> create(
      std::shared_ptr<OvBrokerClientController> brokerClientController, WelcomeScreenDelegate& delegate,
      ProductUpdateWindowController& updateWindow, std::shared_ptr<orvane::Timer> timer,
      std::shared_ptr<orvane::MainQueue> mainQueue);

  /// Starts anew: with the address page, or with what a link carried.
  void setupWelcomeScreenWithURL(std::optional<std::string> url, std::optional<std::string> farmGUID,
                                 WelcomeScreenMode mode);
  /// Ends whatever goes on: no page, no task that runs, no question that waits, and a stored farm as it was.
  void resetContent();
  /// Gives the address page the focus.
  void setFocused();
  /// Whether a page shows that a link must not replace: any but that of the address.
  bool isInProgress() const;

  WelcomeStageView currentStageView() const { return _currentStageView; }
  InputUrlViewController& inputUrl() { return _inputUrl; }
  InputCredentialsViewController& inputCredentials() { return _inputCredentials; }
  ChooseLocationViewController& chooseLocation() { return _chooseLocation; }
  ConnectOnStartConfirmationViewController& connectOnStartConfirmation() { return _connectOnStartConfirmation; }
  ProgressAnimationViewController& progress() { return _progress; }

  const std::shared_ptr<OvFarm>& configuredFarm() const { return _configuredFarm; }
  const std::shared_ptr<OvLocation>& configuredLocation() const { return _configuredLocation; }
  const std::optional<std::string>& configurationURL() const { return _configurationURL; }
  const std::optional<std::string>& autodetectFarmGUID() const { return _autodetectFarmGUID; }
  const std::shared_ptr<OvFarm>& configuredFarmBackup() const { return _configuredFarmBackup; }

  void brokerClientControllerShowNotificationWithTitle(const std::string& title, const std::string& text) override;
  void brokerClientControllerPromptCredentialsWithOldCredentials(const OvCredentials& oldCredentials,
                                                                 CredentialsBlock onDoneBlock, bool shouldDisallowSave,
                                                                 const OvError* authenticationError) override;
  void brokerClientControllerPromptLocationForFarm(const std::shared_ptr<OvFarm>& farm, LocationBlock block) override;
  void brokerClientControllerShowUpdateWindowWithUpdateURL(const std::string& updateUrl, bool updateRequired,
                                                           const std::string& avaliableVersion,
                                                           UpdateBlock onChooseBlock) override;
  void brokerClientControllerDidConfigureFarm(const std::shared_ptr<OvFarm>& farm, int status,
                                              bool farmAlreadyExists) override;
  void brokerClientControllerDidFailFarmConfiguration(const OvError& error) override;
  void brokerClientControllerDidConnectToFarm(const std::shared_ptr<OvFarm>& farm,
                                              const std::shared_ptr<OvLocation>& location) override;
  void brokerClientControllerDidFailConnect(const OvError& error, const std::shared_ptr<OvFarm>& farm) override;
  void brokerClientControllerDidReceiveApplicationList(const std::shared_ptr<AppFolderItem>& rootFolder) override;
  void brokerClientControllerDidUpdateConnectionDescription(const std::string& description) override;

  /// What was saved is not rolled back any more.
  void farmStateDidChange(FarmChange state, const std::shared_ptr<OvFarm>& farm) override;

 private:
  // What going back returns to.
  enum class Stage : int32_t { kAddress = 0, kCredentials = 1 };

  WelcomeScreenViewController(std::shared_ptr<OvBrokerClientController> brokerClientController,
                              WelcomeScreenDelegate& delegate, ProductUpdateWindowController& updateWindow,
                              std::shared_ptr<orvane::Timer> timer, std::shared_ptr<orvane::MainQueue> mainQueue);

  OvFarmManager& farmManager() const { return _brokerClientController->farmManager(); }
  void showStageView(WelcomeStageView page);
  void showStartPage();
  void transiteBack();
  void showErrorMessage(const std::string& text);
  void hideError();
  void stopProgressAnimation();
  void cancelTask();

  void startAutoConfigurationProcess();
  void configureFarm(const std::optional<std::string>& farmGUID, bool fromConfigOnly);
  void run(const orvane::BrokerEvents::Operation& operation);
  void startProgressAnimationWithTask(const std::shared_ptr<PendingTask>& task);
  void connectToCurrentFarm();
  void connectToCurrentFarmAtLocation(const std::shared_ptr<OvLocation>& location);
  void chooseLocationForConfiguredFarm();
  void takeCredentialsOfFarm(const OvFarmConfiguration* reconfiguredFarm);
  void storeConfiguredFarm();

  void promptCredentialsWithOldCredentials(const OvCredentials& oldCredentials, bool disallowSave,
                                           CredentialsBlock onCredentialsInputBlock);
  OvCredentials credentialsToEnterAgain() const;
  void doneWithApps(const std::shared_ptr<AppFolderItem>& rootFolder);
  void welcomeScreenCancelledWithError(const OvError* error);
  void revertCurrectConfiguredFarm();
  void forgetFarm();

  const std::shared_ptr<OvBrokerClientController> _brokerClientController;
  WelcomeScreenDelegate& _delegate;
  ProductUpdateWindowController& _updateWindow;
  std::optional<orvane::BrokerEvents> _brokerEvents{};
  std::shared_ptr<PendingTask> _task{};  // the last operation's

  std::shared_ptr<OvFarm> _configuredFarm{};  // under construction
  std::shared_ptr<OvLocation> _configuredLocation{};
  std::optional<std::string> _configurationURL{};    // as it was entered or linked: a URL or an e-mail address
  std::optional<std::string> _autodetectFarmGUID{};  // of a link
  std::shared_ptr<OvFarm> _configuredFarmBackup{};   // a stored farm as it was, or as it was saved since
  std::optional<OvCredentials>
      _enteredCredentials{};     // by the user last, which the farm has only if a broker took them
  bool _isReconfigured = false;  // since the user went on last: once is enough
  WelcomeScreenMode _welcomeScreenMode = WelcomeScreenMode::kAddConnection;
  WelcomeStageView _currentStageView = WelcomeStageView::kNone;
  Stage _lastWelcomeScreenStage = Stage::kAddress;

  InputUrlViewController _inputUrl{};
  InputCredentialsViewController _inputCredentials{};
  ChooseLocationViewController _chooseLocation;
  ConnectOnStartConfirmationViewController _connectOnStartConfirmation{};
  ProgressAnimationViewController _progress{};
};

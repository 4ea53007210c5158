#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Controllers/AboutWindowController.h"
#include "Controllers/ApplicationTableViewController.h"
#include "Controllers/BrokerEvents.h"
#include "Controllers/ChooseLocationViewController.h"
#include "Controllers/ConfirmWindowController.h"
#include "Controllers/ConnectionSettingsViewController.h"
#include "Controllers/ConnectionsListViewController.h"
#include "Controllers/Desktop.h"
#include "Controllers/DiModeController.h"
#include "Controllers/InputCredentialsViewController.h"
#include "Controllers/MainMenuController.h"
#include "Controllers/ModalAlert.h"
#include "Controllers/ProductUpdateWindowController.h"
#include "Controllers/ProgressAnimationViewController.h"
#include "Controllers/SettingsWindowController.h"
#include "Controllers/Surface.h"
#include "Controllers/TutorialViewController.h"
#include "Controllers/WelcomeScreenViewController.h"
#include "Orchestration/OvBrokerClientController.h"
#include "Orchestration/OvUrlSchemeHandlerDelegate.h"

/// What of the main window may take the keyboard focus as a whole; kNothing takes it away from whatever has it.
enum class MainWindowFocus { kNothing };

/// The program as the user meets it: holds the one current connection, owns every surface, turns what the user does
/// into calls on OvBrokerClientController, and what that tells into prompts, alerts and the table of applications. One
/// object lives from start to termination.
///
/// Belongs to the main thread, and must end there; the two operations that are called elsewhere say so. In
/// desktop-integration mode, which is exactly while there is a DiModeController, the status item stands for the main
/// window, and auxiliary windows are free ones in a modal session where they are sheets otherwise.
class MainWindowController : public orvane::FocusableSurface<MainWindowFocus>,
                             public OvBrokerClientControllerDelegate,
                             public OvFarmManagerObserver,
                             public OvUrlSchemeHandlerDelegate,
                             public WelcomeScreenDelegate,
                             public ApplicationTableDelegate,
                             public ConnectionsListDelegate,
                             public ConnectionSettingsDelegate,
                             public MainMenuDelegate,
                             public DiModeDelegate,
                             public std::enable_shared_from_this<MainWindowController> {
 public:
  /// Where the welcome flow is shown.
  enum class WelcomePlacement : int { kWholeWindow = 0, kSidePanel = 1 };
  /// What covers the main surface while it takes no input.
  enum class Cover { kNone, kClear, kGrey };

  /// Set up to the disconnected state. The menu and the preferences outlive it.
  static std::shared_ptr<MainWindowController> create(orvane::Desktop desktop,
                                                      std::shared_ptr<OvBrokerClientController> orchestration,
                                                      OrvaneSettings& settings, MainMenuController& mainMenu);
  ~MainWindowController() override;

  /// The ordinary start.
  void showMainWindow();
  /// Shows the window, and starts nothing.
  void showWindow();
  /// Shows the window as it was left, also out of the dock; nothing happens in desktop-integration mode, nor if that is
  /// what the preferences say.
  void reopen();
  /// Does what a link says. Any thread but the main one, for as long as that takes to clear the stage; whoever calls
  /// keeps this object.
  void processURLScheme(const std::string& text);

  const std::shared_ptr<OvFarm>& currentFarm() const { return _currentFarm; }
  const std::shared_ptr<OvLocation>& currentLocation() const { return _currentLocation; }

  // The main surface.
  const std::string& windowTitle() const { return _windowTitle; }
  bool isToolbarVisible() const { return _isToolbarVisible; }
  bool isConnectionsItemEnabled() const { return _isConnectionsItemEnabled; }
  bool isLogoutItemEnabled() const { return _isLogoutItemEnabled; }
  bool isRefreshItemEnabled() const { return _isRefreshItemEnabled; }
  const std::string& activeConnectionLabel() const { return _activeConnectionLabel; }
  Cover cover() const { return _cover; }
  bool isSidePanelOpen() const { return _isSidePanelOpen; }
  /// Whether the panel slides into the place that it has now, or is there at once.
  bool isSidePanelAnimated() const { return _isSidePanelAnimated; }
  bool isConnectionSettingsViewShown() const { return _isConnectionSettingsViewShown; }
  /// Where the welcome flow is; nothing while it isn't shown.
  const std::optional<WelcomePlacement>& welcomePlacement() const { return _welcomePlacement; }
  bool isTutorialShown() const { return _isTutorialShown; }

  // What the user does there.
  void onConnectionsButtonClick() { toggleSidePanel(); }
  void onLogoutButtonClick() { mainMenuWantsLogout(); }
  void onRefreshButtonClick() { refreshApplicationsForCurrentFarm(); }
  /// A click on what the side panel leaves free.
  void handleSidePanelMainDisablingAreaClick() { closeSidePanelAnimated(true); }
  /// Ends the program, unless it goes on as a status item.
  void windowWillClose();
  /// The size that the window may take: at most half the width and the full height of the screen.
  orvane::Screens::Size windowWillResize(orvane::Screens::Size size) const;

  // The surfaces that it owns, for those who draw them. Never null, but for the DI controller outside that mode.
  ApplicationTableViewController& applicationTable() { return _applicationTable; }
  WelcomeScreenViewController& welcomeScreen() { return *_welcomeScreen; }
  ConnectionsListViewController& connectionsList() { return *_connectionsList; }
  ConnectionSettingsViewController& connectionSettings() { return *_connectionSettings; }
  ChooseLocationViewController& chooseLocation() { return _chooseLocation; }
  InputCredentialsViewController& inputCredentials() { return _inputCredentials; }
  ProgressAnimationViewController& progress() { return _progress; }
  AlertViewController& alert() { return _alert.alert(); }
  ProductUpdateWindowController& productUpdate() { return _productUpdate; }
  TutorialViewController& tutorial() { return _tutorial; }
  SettingsWindowController& settingsWindow() { return _settingsWindow; }
  AboutWindowController& aboutWindow() { return _aboutWindow; }
  ConfirmWindowController& confirmWindow() { return _confirmWindow; }
  MainMenuController& mainMenu() { return _mainMenu; }
  const std::shared_ptr<DiModeController>& diMode() const { return _diModeController; }
  OvFarmManager& farmManager() const { return _brokerClientController->farmManager(); }

  // OvBrokerClientControllerDelegate; orvane::BrokerEvents has brought the calls onto the main thread.
  void brokerClientControllerShowNotificationWithTitle(const std::string& title, const std::string& text) override;
  void brokerClientControllerPromptCredentialsWithOldCredentials(
      const OvCredentials& oldCredentials, OvBrokerClientControllerDelegate::CredentialsBlock onDoneBlock,
      bool shouldDisallowSave, const OvError* authenticationError) override;
  void brokerClientControllerPromptLocationForFarm(const std::shared_ptr<OvFarm>& farm, LocationBlock block) override;
  void brokerClientControllerShowUpdateWindowWithUpdateURL(const std::string& updateUrl, bool updateRequired,
                                                           const std::string& avaliableVersion,
                                                           UpdateBlock onChooseBlock) override;
  void brokerClientControllerDidConfigureFarm(const std::shared_ptr<OvFarm>&, int, bool) override {}
  void brokerClientControllerDidFailFarmConfiguration(const OvError&) override {}
  void brokerClientControllerDidConnectToFarm(const std::shared_ptr<OvFarm>& farm,
                                              const std::shared_ptr<OvLocation>& location) override;
  void brokerClientControllerDidFailConnect(const OvError& error, const std::shared_ptr<OvFarm>& farm) override;
  void brokerClientControllerDidReceiveApplicationList(const std::shared_ptr<AppFolderItem>& rootFolder) override;
  void brokerClientControllerDidUpdateConnectionDescription(const std::string& description) override;

  void farmStateDidChange(FarmChange state, const std::shared_ptr<OvFarm>& farm) override;

  /// On the thread that reads the link.
  void urlSchemeHandlerDidReceiveAutodetectURL(const std::string& url, const std::string& farmGUID) override;

  void welcomeScreenDoneWithConnectedFarm(const std::shared_ptr<OvFarm>& farm,
                                          const std::shared_ptr<OvLocation>& location,
                                          const std::shared_ptr<AppFolderItem>& receivedApps) override;
  void welcomeScreenCancelWithError(const OvError* error) override;
  void welcomeScreenWantsShowNotificationWithTitle(const std::string& title, const std::string& text) override;

  void applicationHasBeenChoosen(const std::shared_ptr<AppItem>& item) override;

  void connectionsListConnectionDidClick(const std::shared_ptr<OvFarm>& farm) override;
  void connectionsListEditConnectionDidClick(const std::shared_ptr<OvFarm>& farm) override;
  void connectionsListAddConnectionDidClick() override;
  void connectionsListAboutDidClick() override { showAboutWindow(); }
  void connectionsListSettingsDidClick() override { showSettingsWindow(); }

  void connectionSettingsDidFinishEditing(const std::shared_ptr<OvFarm>& farm, int farmState) override;
  void connectionSettingsPromptClearingCredentialsForFarm(const std::shared_ptr<OvFarm>& farm,
                                                          ConfirmationBlock block) override;
  void connectionSettingsPromptCredentialsWithOldCredentials(
      const OvCredentials& oldCredentials, bool disallowSave,
      ConnectionSettingsDelegate::CredentialsBlock onDoneBlock) override;
  void connectionSettingsPromptConfirmationToDeleteFarmWithBlock(ConfirmationBlock block) override;
  void connectionSettingsWantsShowSheetWindow(orvane::AuxiliaryWindow window) override { showAuxiliaryWindow(window); }
  void connectionSettingsWantsHideSheetWindow(orvane::AuxiliaryWindow window) override { hideAuxiliaryWindow(window); }
  void connectionSettingsWantsSaveSetttings() override { farmManager().save(); }

  void mainMenuWantsShowSettingsWindow() override { showSettingsWindow(); }
  void mainMenuWantsShowAboutWindow() override { showAboutWindow(); }
  void mainMenuWantsSwitchToDiMode() override { switchToDiMode(); }
  void mainMenuWantsRefreshApplicationList() override { refreshApplicationsForCurrentFarm(); }
  void mainMenuWantsLogout() override { logoutFromCurrentFarmWithConfirmationBlock({}); }
  void mainMenuWantsToggleSidePanel() override { toggleSidePanel(); }

  void diModeWantsConnectToFarm(const std::shared_ptr<OvFarm>& farm) override { connectToFarm(farm); }
  void diModeWantsCancelConnect() override;
  void diModeWantsLaunchApp(const std::shared_ptr<AppItem>& item) override { launchApplication(item); }
  void diModeWantsRefreshApplicationList() override { refreshApplicationsForCurrentFarm(); }
  void diModeWantsLogoutWithOnDoneBlock(ConfirmationBlock onDoneBlock) override;
  void diModeWantsShowSettings() override { showSettingsWindow(); }
  void diModeWantsShowAbout() override { showAboutWindow(); }
  void diModeWantsGoToExpandedMode() override { switchToNormalMode(); }

 private:
  using Window = orvane::AuxiliaryWindow;
  using Confirmation = std::function<void(bool isConfirmed, bool isBoxChecked)>;

  MainWindowController(orvane::Desktop desktop, std::shared_ptr<OvBrokerClientController> orchestration,
                       OrvaneSettings& settings, MainMenuController& mainMenu);
  void awakeFromNib();
  void createAuxiliaryWindowsAndViews();

  // MainWindowConnection.cpp
  void connectToAutolaunchedFarm();
  void connectToFarm(const std::shared_ptr<OvFarm>& farm);
  void connectToFarmAtLocation(const std::shared_ptr<OvFarm>& farm, const std::shared_ptr<OvLocation>& location);
  void connectToFarmDidSucceedForFarm(const std::shared_ptr<OvFarm>& farm, const std::shared_ptr<OvLocation>& location);
  void refreshApplicationTableWithFolders(const std::shared_ptr<AppFolderItem>& rootFolder);
  void refreshApplicationsForCurrentFarm();
  void startAutolaunchedApplication();
  void launchApplication(const std::shared_ptr<AppItem>& item);
  void launchDidComplete(const std::optional<OvError>& error);
  void logoutFromCurrentFarmWithConfirmationBlock(Confirmation onDone);
  void logoutFromCurrentFarm();
  void logoutFromCurrentFarmWithSessionsDisconnecting(bool disconnectsSessions);
  void disconnectFromCurrentFarm();
  void applyFarmChange(FarmChange state, const std::shared_ptr<OvFarm>& farm);

  // MainWindowModes.cpp
  void switchToDiMode();
  void switchToNormalMode();
  bool isInDiMode() const { return _diModeController != nullptr; }
  void showAuxiliaryWindow(Window window);
  void hideAuxiliaryWindow(Window window);
  std::optional<Window> currentAuxiliaryWindow() const;
  void sheetDidEnd(Window window);
  void endModalSession(Window window);
  void answerPromptOf(Window window);
  void startProgressAnimationWithCancelBlock(std::function<void()> onCancel);
  void stopProgressAnimation();
  void stopProgressAnimationAndPerformCancelBlock();
  void promptWasCancelled();

  // MainWindowPrompts.cpp
  bool hideProgressWindow();
  void continueProgress(bool goesOn);
  void showChooseLocationForFarm(const std::shared_ptr<OvFarm>& farm, LocationBlock onChoose);
  void showPromptCredentialsWithCredentials(const OvCredentials& credentials, bool disallowSave,
                                            OvBrokerClientControllerDelegate::CredentialsBlock onDoneBlock,
                                            const OvError* retryError);
  OvBrokerClientControllerDelegate::CredentialsBlock credentialsWindowCallback(
      OvBrokerClientControllerDelegate::CredentialsBlock onDone);
  void showConfirmation(const std::string& text, Confirmation onDone);
  void showAlertWithMessage(const std::string& message, const std::string& title, std::function<void(int)> onDoneBlock);
  void showAlertWithMessage(const std::string& message);
  void showUserNotificationWithTitle(const std::string& title, const std::string& text);
  void showSettingsWindow();
  void showAboutWindow();

  // MainWindowPanels.cpp
  void showWelcomeScreenInMode(WelcomePlacement placement, std::optional<std::string> url,
                               std::optional<std::string> farmGUID, WelcomeScreenMode mode);
  void closeWelcomeScreen();
  bool removeWelcomeScreen();
  bool clearTheStageForLink();
  void hideAllViewsAndWindows();
  bool areAdvancedKeysHeld() const;
  void showTutorialWithFinishBlock(std::function<void()> onFinish);
  void hideTutorial();
  void openSidePanel();
  void closeSidePanelAnimated(bool isAnimated);
  void toggleSidePanel();
  void showConnectionSettingsView(bool isShown);
  void setMainMenuItemsEnabled(bool isEnabled);
  void setToolbarItemsEnabled(bool isEnabled);
  void setLogoutAndRefreshEnabled(bool isEnabled);
  void enableUserInteractions();
  void disableUserInteractionsWithGraying(bool isGrey);
  void updateToolbarAndWindowTitlesForFarm(const OvFarm* farm);

  const orvane::Desktop _desktop;
  OrvaneSettings& _settings;
  MainMenuController& _mainMenu;

  std::shared_ptr<OvFarm> _currentFarm{};
  std::shared_ptr<OvLocation> _currentLocation{};
  bool _shouldLaunchApplicationOnConnectToAutolaunchedFarm = false;
  std::optional<Window> _modalSessionForCurrentModalWindow{};

  std::string _windowTitle{};
  std::string _activeConnectionLabel{};
  bool _isToolbarVisible = true;
  bool _isConnectionsItemEnabled = true;
  bool _isLogoutItemEnabled = false;
  bool _isRefreshItemEnabled = false;
  Cover _cover = Cover::kNone;
  bool _isSidePanelOpen = false;
  bool _isSidePanelAnimated = false;
  bool _isConnectionSettingsViewShown = false;
  std::optional<WelcomePlacement> _welcomePlacement{};
  bool _isTutorialShown = false;

  const std::shared_ptr<OvBrokerClientController> _brokerClientController;
  std::optional<orvane::BrokerEvents> _brokerEvents{};
  ApplicationTableViewController _applicationTable;
  ProductUpdateWindowController _productUpdate;
  std::shared_ptr<WelcomeScreenViewController> _welcomeScreen{};
  std::shared_ptr<ConnectionsListViewController> _connectionsList{};
  std::shared_ptr<ConnectionSettingsViewController> _connectionSettings{};
  ChooseLocationViewController _chooseLocation;
  InputCredentialsViewController _inputCredentials{};
  ProgressAnimationViewController _progress{};
  orvane::ModalAlert _alert;
  TutorialViewController _tutorial;
  SettingsWindowController _settingsWindow;
  AboutWindowController _aboutWindow;
  ConfirmWindowController _confirmWindow{};
  std::shared_ptr<DiModeController> _diModeController{};
};

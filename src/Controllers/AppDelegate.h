#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Controllers/Desktop.h"
#include "Controllers/MainMenuController.h"
#include "Controllers/MainWindowController.h"
#include "Controllers/ModalAlert.h"

/// How a run of the program began; the first event decides.
enum class ApplicationLaunchType : int32_t { kUndecided = 0, kOrdinary = 1, kLink = 2, kFile = 3 };

/// Decides how this run of the program began, and routes links and launch files.
///
/// Whoever runs the main loop makes it, then calls applicationWillFinishLaunching, then delivers the link or file that
/// caused the start, then calls applicationDidFinishLaunching; links and files may also come at any later time. All of
/// it on the main thread.
class AppDelegate : public orvane::UserNotificationsDelegate, public std::enable_shared_from_this<AppDelegate> {
 public:
  struct Environment {
    orvane::Desktop desktop;
    std::shared_ptr<OvBrokerClientController> brokerClientController;
    std::shared_ptr<ApplicationLauncher> launcher;  ///< of launch files
    OrvaneSettings& settings;
  };

  /// With its main window controller. No pointer is null. The preferences outlive it.
  static std::shared_ptr<AppDelegate> create(Environment environment);
  ~AppDelegate() override;

  void applicationWillFinishLaunching();
  void applicationDidFinishLaunching();
  /// Lets the controllers go. Nobody is logged out, and nothing is saved that wasn't saved when it changed.
  void applicationWillTerminate();

  /// The user started the program that runs already. @return false: nothing else is to be done.
  bool applicationShouldHandleReopen();

  /// Launches what the launch file describes, on a worker. A run that began with it ends when that is done, and shows
  /// no window but an alert if it fails. @return true: the file is taken.
  bool applicationOpenFile(const std::string& path);

  /// Takes a link. One of another scheme than "orvane" or "helperorvane" is dropped.
  void handleGetURLEvent(const std::string& url);

  bool userNotificationCenterShouldPresentNotification() const override { return true; }

  ApplicationLaunchType applicationLaunchType() const { return _applicationLaunchType; }
  /// Null after the termination.
  const std::shared_ptr<MainWindowController>& mainWindowController() const { return _mainWindowController; }
  MainMenuController& mainMenuController() { return _mainMenuController; }
  /// What orvane::AuxiliaryWindow::kLaunchFileAlert draws.
  AlertViewController& launchFileAlert() { return _launchFileAlert.alert(); }

 private:
  explicit AppDelegate(Environment environment);
  void createUIControllers();
  void releaseUIControllers();
  void launchDidEnd(const std::optional<OvError>& error, bool endsRun);

  const Environment _environment;
  MainMenuController _mainMenuController;
  orvane::ModalAlert _launchFileAlert;
  std::shared_ptr<MainWindowController> _mainWindowController{};
  ApplicationLaunchType _applicationLaunchType = ApplicationLaunchType::kUndecided;
};

#include "Controllers/AppDelegate.h"

#include <utility>

#include <strings.h>

#include "Orchestration/ApplicationLauncher.h"
#include "OrvaneCommon/LocalizedText.h"
#include "OrvaneCommon/OvULog.h"
#include "Support/OvWriteLog.h"

namespace {

constexpr std::string_view kScheme = "orvane://";
constexpr std::string_view kHelperScheme = "helperorvane";
constexpr std::string_view kSchemeOfHelper = "orvane";

std::string withoutHelperScheme(std::string text) {
  for (size_t at = 0; (at = text.find(kHelperScheme, at)) != std::string::npos; at += kSchemeOfHelper.size()) {
    text.replace(at, kHelperScheme.size(), kSchemeOfHelper);
  }
  return text;
}

}  // namespace

std::shared_ptr<AppDelegate> AppDelegate::create(Environment environment) {
  const std::shared_ptr<AppDelegate> delegate(new AppDelegate(std::move(environment)));
  delegate->createUIControllers();
  return delegate;
}

AppDelegate::AppDelegate(Environment environment)
    : _environment(std::move(environment)),
      _mainMenuController(_environment.desktop.opener, _environment.desktop.globalQueue),
      _launchFileAlert(_environment.desktop.windows, orvane::AuxiliaryWindow::kLaunchFileAlert) {}

AppDelegate::~AppDelegate() { releaseUIControllers(); }

void AppDelegate::createUIControllers() {
  _mainWindowController = MainWindowController::create(_environment.desktop, _environment.brokerClientController,
                                                       _environment.settings, _mainMenuController);
  _mainMenuController.setDelegate(_mainWindowController.get());
}

void AppDelegate::releaseUIControllers() {
  _mainMenuController.setDelegate(nullptr);
  _mainWindowController.reset();
}

void AppDelegate::applicationWillFinishLaunching() {
  _applicationLaunchType = ApplicationLaunchType::kUndecided;
  OvU_InitLogForModule("Orvane");
  _environment.desktop.notifications->setDelegate(this);
}

void AppDelegate::applicationDidFinishLaunching() {
  if (_applicationLaunchType == ApplicationLaunchType::kFile) return;
  if (_applicationLaunchType == ApplicationLaunchType::kUndecided) {
    _applicationLaunchType = ApplicationLaunchType::kOrdinary;
  }
  OvWriteLog(2, "%s: Orvane did finish launching with launch type = %i", __func__,
             static_cast<int>(_applicationLaunchType));
  _environment.desktop.process->activateIgnoringOtherApps();
  if (_applicationLaunchType == ApplicationLaunchType::kLink) {
    _mainWindowController->showWindow();
  } else {
    _mainWindowController->showMainWindow();
  }
}

void AppDelegate::applicationWillTerminate() {
  _environment.desktop.notifications->setDelegate(nullptr);
  releaseUIControllers();
}

bool AppDelegate::applicationShouldHandleReopen() {
  _mainWindowController->reopen();
  return false;
}

void AppDelegate::handleGetURLEvent(const std::string& url) {
  const std::string text = withoutHelperScheme(url);
  OvWriteLog(4, "%s: Orvane Connector received Url: %s", __func__, text.c_str());
  if (strncasecmp(text.c_str(), kScheme.data(), kScheme.size()) != 0) return;
  if (_applicationLaunchType == ApplicationLaunchType::kUndecided)
    _applicationLaunchType = ApplicationLaunchType::kLink;
  // The controller ends on the main thread, also if the worker is the last to let it go.
  _environment.desktop.globalQueue->post(
      [controller = _mainWindowController, mainQueue = _environment.desktop.mainQueue, text]() mutable {
        controller->processURLScheme(text);
        mainQueue->post([last = std::move(controller)] {});
      });
}

bool AppDelegate::applicationOpenFile(const std::string& path) {
  OvWriteLog(4, "%s: Launching Orvane Connection with file: %s", __func__, path.c_str());
  const bool isRunForFile = _applicationLaunchType == ApplicationLaunchType::kUndecided;
  if (isRunForFile) _applicationLaunchType = ApplicationLaunchType::kFile;
  _environment.desktop.globalQueue->post([self = weak_from_this(), mainQueue = _environment.desktop.mainQueue,
                                          launcher = _environment.launcher, path, isRunForFile] {
    OvError error;
    const bool isLaunched = launcher->launchAppWithOvlFile(path, &error);
    mainQueue->post([self, isRunForFile, error = isLaunched ? std::nullopt : std::optional(error)] {
      if (const auto delegate = self.lock()) delegate->launchDidEnd(error, isRunForFile);
    });
  });
  return true;
}

void AppDelegate::launchDidEnd(const std::optional<OvError>& error, bool endsRun) {
  const auto end = [process = _environment.desktop.process, endsRun](int) {
    if (endsRun) process->terminate();
  };
  if (!error) {
    end(AlertViewController::kNoButton);
    return;
  }
  _launchFileAlert.show(error->description, orvane::localizedText("ProductName.Orvane"), orvane::WindowParent::kNone,
                        end);
}

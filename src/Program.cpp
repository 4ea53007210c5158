#include "Program.h"

#include <QApplication>
#include <QWindow>
#include <iostream>
#include <optional>
#include <utility>

#include "Controllers/AppDelegate.h"
#include "Orchestration/ApplicationLauncher.h"
#include "Orchestration/ContentOpener.h"
#include "Orchestration/OvNetServiceBrowser.h"
#include "Platform/Linux/Desktop/ApplicationArguments.h"
#include "Platform/Linux/Desktop/AutostartEntry.h"
#include "Platform/Linux/Desktop/DesktopNotifications.h"
#include "Platform/Linux/Desktop/DesktopScreens.h"
#include "Platform/Linux/Desktop/EventLoopMainQueue.h"
#include "Platform/Linux/Desktop/KeyboardModifiers.h"
#include "Platform/Linux/DesktopOpener.h"
#include "Platform/Linux/PosixProcessStarter.h"
#include "Platform/Linux/SecretService.h"
#include "Platform/ThreadQueues.h"
#include "Platform/ThreadTimer.h"
#include "Support/OvWriteLog.h"
#include "Windows/Desktop/DesktopColorScheme.h"
#include "Windows/Desktop/DesktopStatusArea.h"
#include "Windows/Desktop/DesktopWindows.h"
#include "Windows/Desktop/MainLoopWatch.h"
#include "Windows/Desktop/Surfaces.h"
#include "Windows/MainWindow/MainWindow.h"
#include "Windows/Style/Text.h"
#include "Windows/Style/Theme.h"

namespace orvane {

struct Program::Parts {
  explicit Parts(const Options& options)
      : starter(std::make_shared<PosixProcessStarter>(globalQueue)),
        opener(std::make_shared<DesktopOpener>(starter)),
        launcher(std::make_shared<ApplicationLauncher>(ApplicationLauncher::Environment{
            .preferences = OrvaneSettings::instance(),
            .processStarter = starter,
            .contentOpener = std::make_shared<ContentOpener>(opener, globalQueue, timer),
            .screens = screens})),
        notifications(std::make_shared<DesktopNotifications>(DesktopNotifications::Program{
            .showInWindow = [this](const std::string& title, const std::string& text) { showMessage(title, text); },
            .activate = [this](const std::string& token) { activate(token); },
            .isActive = [] { return QApplication::activeWindow() != nullptr; }})),
        statusArea(std::make_shared<DesktopStatusArea>([this] { windows->terminate(); })) {
    const auto farmManager = std::make_shared<OvFarmManager>(
        MCGetDataFilePath(), std::make_shared<MCCachedKeychain>(secrets), makeSerialQueue(), mainQueue);
    const auto broker = std::make_shared<OvBrokerClientController>(
        OvBrokerClientController::Environment{.farmManager = farmManager,
                                              .srvRecordsBrowser = std::make_shared<OvNetServiceBrowser>(),
                                              .launcher = launcher,
                                              .mainQueue = mainQueue,
                                              .globalQueue = globalQueue});
    delegate = AppDelegate::create({.desktop = {.mainQueue = mainQueue,
                                                .globalQueue = globalQueue,
                                                .timer = timer,
                                                .opener = opener,
                                                .windows = windows,
                                                .process = windows,
                                                .notifications = notifications,
                                                .statusArea = statusArea,
                                                .modifierKeys = std::make_shared<KeyboardModifiers>(),
                                                .screens = screens,
                                                .autostart = std::make_shared<AutostartEntry>(options.executable)},
                                    .brokerClientController = broker,
                                    .launcher = launcher,
                                    .settings = OrvaneSettings::instance()});
    applyTheme(*qApp, colorScheme.scheme());
    mainWindow.emplace(controller(), [this] { windows->terminate(); });
    windows->attach(*mainWindow, [this](AuxiliaryWindow window) { return makeSurface(window, *delegate); });
    statusArea->attach([this] { return delegate->mainWindowController() ? controller().diMode() : nullptr; });
    screens->setMainWindow(&*mainWindow);
    // By the loop's first work: the start is no wait of somebody who uses the program.
    if (options.measuresMainLoop) mainQueue->post([this] { watch.emplace(mainQueue); });
  }

  MainWindowController& controller() { return *delegate->mainWindowController(); }
  void showMessage(const std::string& title, const std::string& text) {
    if (mainWindow && mainWindow->isVisible()) {
      mainWindow->showMessage(toQString(title), toQString(text));
    } else {
      OvWriteLog(2, "%s: %s %s", __func__, title.c_str(), text.c_str());
    }
  }
  void activate(const std::string& token) {
    windows->setActivationToken(token);
    delegate->applicationShouldHandleReopen();
    statusArea->showResident();
  }

  const std::shared_ptr<EventLoopMainQueue> mainQueue = std::make_shared<EventLoopMainQueue>();
  const std::shared_ptr<GlobalQueue> globalQueue = makeGlobalQueue();
  const std::shared_ptr<Timer> timer = makeTimer();
  const std::shared_ptr<SecretService> secrets = std::make_shared<SecretService>();
  const std::shared_ptr<DesktopScreens> screens = std::make_shared<DesktopScreens>();
  const std::shared_ptr<DesktopWindows> windows = std::make_shared<DesktopWindows>();
  const std::shared_ptr<PosixProcessStarter> starter;
  const std::shared_ptr<DesktopOpener> opener;
  const std::shared_ptr<ApplicationLauncher> launcher;
  const std::shared_ptr<DesktopNotifications> notifications;
  const std::shared_ptr<DesktopStatusArea> statusArea;
  std::shared_ptr<AppDelegate> delegate{};
  DesktopColorScheme colorScheme{[](ColorScheme scheme) { applyTheme(*qApp, scheme); }};
  std::optional<MainWindow> mainWindow{};
  std::optional<MainLoopWatch> watch{};
};

Program::Program(Options options) : parts_(std::make_unique<Parts>(options)), options_(std::move(options)) {}

Program::~Program() = default;

void Program::willFinishLaunching() { parts_->delegate->applicationWillFinishLaunching(); }

void Program::openAddress(const std::string& address, const std::string& activationToken) {
  parts_->windows->setActivationToken(activationToken);
  if (const std::optional<std::string> path = filePathOfAddress(address)) {
    parts_->delegate->applicationOpenFile(*path);
  } else {
    parts_->delegate->handleGetURLEvent(address);
    // Here nobody brings a program to the front because it got a link.
    parts_->windows->activateIgnoringOtherApps();
  }
}

void Program::didFinishLaunching() {
  parts_->delegate->applicationDidFinishLaunching();
  InputUrlViewController& page = parts_->controller().welcomeScreen().inputUrl();
  if (!options_.addressToConnect.empty() && parts_->controller().welcomePlacement())
    page.setUrlToConnect(options_.addressToConnect);
}

void Program::reopen(const std::string& activationToken) { parts_->activate(activationToken); }

void Program::perform(const std::string& action, const std::string& activationToken) {
  parts_->windows->setActivationToken(activationToken);
  const std::pair<const char*, std::function<void()>> kActions[] = {
      {"preferences", [this] { parts_->delegate->mainMenuController().onSettingsClick(); }},
      {"about", [this] { parts_->delegate->mainMenuController().onAboutClick(); }},
      {"quit", [this] { parts_->windows->terminate(); }}};
  for (const auto& [name, act] : kActions) {
    if (action == name) act();
  }
}

void Program::terminate() {
  if (parts_->watch)
    std::cerr << "longest main loop gap: " << parts_->watch->longestGap().count() << " ms" << std::endl;
  parts_->delegate->applicationWillTerminate();
  parts_->secrets->cancelAll();
}

}  // namespace orvane

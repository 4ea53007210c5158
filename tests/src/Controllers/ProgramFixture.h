#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "../Orchestration/LaunchFixture.h"
#include "Controllers/AppDelegate.h"
#include "Orchestration/OvNetServiceBrowser.h"
#include "Platform/ThreadQueues.h"
#include "Support/FakeDesktop.h"
#include "Support/FakeSecretStore.h"
#include "Support/HomeOfTest.h"

/// The whole program but for its windows: real controllers and flows with real worker threads, a store and preferences
/// in a home of the test, over a desktop that writes down what is done to it. The main thread is the test's.
class ProgramFixture {
 public:
  /// Makes the orchestration in place of the real one.
  using Orchestration = std::function<std::shared_ptr<OvBrokerClientController>(OvBrokerClientController::Environment)>;

  explicit ProgramFixture(std::string servers = "127.0.0.1:1") : dnsServers(std::move(servers)) {}
  /// A program on one thread alone, whose workers too are pumped by the test.
  explicit ProgramFixture(Orchestration madeUp) : orchestration(std::move(madeUp)), globalQueue(mainQueue) {}

  /// Lets go of the program, and of what it has left on the main queue.
  ~ProgramFixture() {
    end();
    mainQueue->pump();
  }

  /// Puts farms into the store, as an earlier run would have left them.
  void store(const std::vector<std::shared_ptr<OvFarm>>& farms) {
    OvFarmManager earlier(storePath, std::make_shared<MCCachedKeychain>(secrets), mainQueue, mainQueue);
    for (const auto& farm : farms) earlier.addFarm(farm);
    earlier.save();
    mainQueue->pump();
  }
  /// The names of the farms in the store's file.
  std::vector<std::string> storedFarms() const {
    OvFarmManager reader(storePath, std::make_shared<MCCachedKeychain>(secrets), mainQueue, mainQueue);
    reader.load();
    std::vector<std::string> names;
    for (const auto& farm : reader.farms()) names.push_back(farm->name());
    return names;
  }

  /// Starts the program; `event` is what caused the start.
  void start(const std::function<void(AppDelegate&)>& event = {}) {
    const auto manager =
        std::make_shared<OvFarmManager>(storePath, std::make_shared<MCCachedKeychain>(secrets), mainQueue, mainQueue);
    const OvBrokerClientController::Environment environment{
        .farmManager = manager,
        .srvRecordsBrowser = std::make_shared<OvNetServiceBrowser>(std::chrono::seconds(5), dnsServers),
        .launcher = launches.launcher,
        .mainQueue = mainQueue,
        .globalQueue = globalQueue};
    app = AppDelegate::create({.desktop = {.mainQueue = mainQueue,
                                           .globalQueue = globalQueue,
                                           .timer = timer,
                                           .opener = launches.opener,
                                           .windows = desktop,
                                           .process = desktop,
                                           .notifications = desktop,
                                           .statusArea = desktop,
                                           .modifierKeys = desktop,
                                           .screens = desktop,
                                           .autostart = desktop},
                               .brokerClientController = orchestration
                                                             ? orchestration(environment)
                                                             : std::make_shared<OvBrokerClientController>(environment),
                               .launcher = launches.launcher,
                               .settings = settings()});
    app->applicationWillFinishLaunching();
    if (event) event(*app);
    app->applicationDidFinishLaunching();
  }
  void end() {
    if (app) app->applicationWillTerminate();
    app.reset();
  }

  MainWindowController& window() { return *app->mainWindowController(); }
  WelcomeScreenViewController& welcome() { return window().welcomeScreen(); }
  OvFarmManager& farmManager() { return window().farmManager(); }
  OrvaneSettings& settings() { return launches.preferences; }

  /// Runs the main thread until the condition holds.
  template <class Condition>
  [[nodiscard]] bool until(const Condition& condition) {
    return mainQueue->pumpUntil(condition);
  }
  /// The acts since the last call, in one line.
  std::string acts() {
    std::string line;
    for (const std::string& act : desktop->takeActs()) line += (line.empty() ? "" : ", ") + act;
    return line;
  }
  /// The names of what the table of applications shows.
  std::vector<std::string> table() {
    std::vector<std::string> names;
    for (const auto& item : window().applicationTable().appItems()) names.push_back(item->displayName());
    return names;
  }

  const std::string dnsServers = "127.0.0.1:1";
  const Orchestration orchestration;
  const HomeOfTest home;
  const std::string storePath = home.file("settings_2.plist");
  LaunchFixture launches{home.file("settings.xml")};
  const std::shared_ptr<PumpedQueue> mainQueue = std::make_shared<PumpedQueue>();
  const std::shared_ptr<orvane::GlobalQueue> globalQueue = orvane::makeGlobalQueue();
  const std::shared_ptr<FakeTimer> timer = std::make_shared<FakeTimer>();
  const std::shared_ptr<FakeDesktop> desktop = std::make_shared<FakeDesktop>(mainQueue);
  const std::shared_ptr<FakeSecretStore> secrets = std::make_shared<FakeSecretStore>();
  std::shared_ptr<AppDelegate> app{};
};

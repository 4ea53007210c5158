// What the main window does at each call, with flows that the test makes up.

#include <gmock/gmock.h>

#include "OrvaneCommon/LocalizedText.h"
#include "ProgramFixture.h"
#include "ScriptedOrchestration.h"
#include "Support/OvWriteLog.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

using Window = FakeDesktop::Window;
using Item = MainMenuController::Item;
using Cover = MainWindowController::Cover;

class MainWindowTest : public testing::Test, public ProgramFixture {
 protected:
  MainWindowTest()
      : ProgramFixture(
            [this](const auto& environment) { return broker = std::make_shared<ScriptedOrchestration>(environment); }) {
    settings().setShowTutorialOnStart(false);
    settings().save();
    desktop->duringModalRun = [this](Window window) {
      if (window != Window::kAlert) return;
      alerts.push_back(this->window().alert().text());
      this->window().alert().onButtonClick(0);
    };
  }
  ~MainWindowTest() override { broker.reset(); }

  static std::shared_ptr<OvFarm> farmNamed(const std::string& name, const std::vector<std::string>& locations) {
    auto farm = std::make_shared<OvFarm>();
    farm->setName(name);
    farm->credentials().setUsername("ann");
    farm->credentials().setNeedToSave(true);
    for (const std::string& location : locations) {
      farm->addLocation(OvLocation::location());
      farm->locations().back()->setName(location);
    }
    return farm;
  }
  // With two farms, so that none connects by itself.
  void startWithTwo() {
    store({farmNamed("A", {"one"}), farmNamed("B", {"one", "two"})});
    start();
    mainQueue->pump();
    acts();
  }
  const std::shared_ptr<OvFarm>& farm(size_t index) { return farmManager().farms().at(index); }
  ScriptedOrchestration::Flow& flow() { return *broker->flows.back(); }
  std::shared_ptr<OvBrokerClientControllerDelegate> delegate() { return flow().delegate.lock(); }

  void tellConnected() {
    auto root = AppFolderItem::appFolder();
    for (const char* name : {"Games", "Office"}) {
      auto folder = AppFolderItem::appFolder();
      folder->setDisplayName(name);
      auto item = std::make_shared<AppItem>();
      item->setName(std::string("in ") + name);
      item->setDisplayName("Thing");
      folder->addItem(item);
      root->addItem(folder);
    }
    if (flow().kind == ScriptedOrchestration::Kind::kConnect) {
      delegate()->brokerClientControllerDidConnectToFarm(flow().farm, flow().location);
    }
    delegate()->brokerClientControllerDidReceiveApplicationList(root);
    mainQueue->pump();
  }
  void connect(size_t row) {
    window().connectionsList().onConnectionClick(row);
    tellConnected();
  }
  void askForCredentials() {
    delegate()->brokerClientControllerPromptCredentialsWithOldCredentials(
        {}, [this](std::optional<OvCredentials> given) { answers.push_back(given ? given->username() : "none"); },
        false, nullptr);
    mainQueue->pump();
  }
  void fail(int code, const std::shared_ptr<OvFarm>& failed) {
    delegate()->brokerClientControllerDidFailConnect({code, "It failed."}, failed);
    mainQueue->pump();
  }

  std::shared_ptr<ScriptedOrchestration> broker;
  std::vector<std::string> alerts;
  std::vector<std::string> answers;
};

TEST_F(MainWindowTest, ALinkTakesOverInNineSteps) {
  startWithTwo();
  connect(0);
  acts();
  std::vector<std::string> steps;
  const auto watch = [&](orvane::Surface& surface, const std::string& name) {
    surface.setOnChange([&steps, name] {
      if (steps.empty() || steps.back() != name) steps.push_back(name);
    });
  };
  watch(window().confirmWindow(), "confirmation");
  watch(window().progress(), "progress");
  watch(window().inputCredentials(), "credentials");
  watch(window().chooseLocation(), "location");
  watch(window().welcomeScreen(), "welcome");
  watch(window().productUpdate(), "update");
  watch(window().alert(), "alert");
  watch(window().tutorial(), "tutorial");
  desktop->isMiniaturized = true;

  window().onLogoutButtonClick();
  steps.clear();
  app->handleGetURLEvent("ORVANE://autodetect/?autodetecturl=aHR0cDovL2Ix&farmguid=");
  mainQueue->pump();
  EXPECT_THAT(steps, ElementsAre("confirmation", "progress", "credentials", "location", "welcome", "update", "alert",
                                 "tutorial", "welcome"));
  EXPECT_EQ(acts(), "sheet confirmation, end sheet confirmation, hide confirmation, deminiaturize main");
  EXPECT_NE(window().currentFarm(), nullptr);  // the question was answered by Cancel
  EXPECT_EQ(flow().kind, ScriptedOrchestration::Kind::kConfigure);
  EXPECT_TRUE(window().welcomeScreen().isInProgress());

  const size_t flows = broker->flows.size();
  OvSetLogFile(home.file("log").c_str());
  OvSetLogLevel(4);
  app->handleGetURLEvent("orvane://autodetect/?autodetecturl=aHR0cDovL2Ix&farmguid=");  // a second one is dropped
  mainQueue->pump();
  OvSetLogLevel(0);
  EXPECT_EQ(broker->flows.size(), flows);
  EXPECT_THAT(contentOf(home.file("log")), HasSubstr("WelcomeScreen is already configuring new connection"));
}

TEST_F(MainWindowTest, ALinkCancelsWhatRunsInEitherModeAndAnswersQuestionsOfASheetAlone) {
  for (const bool isInDiMode : {false, true}) {
    SCOPED_TRACE(isInDiMode);
    answers.clear();
    startWithTwo();
    if (isInDiMode) window().mainMenu().onDiModeClick();
    isInDiMode ? window().diMode()->onFarmClick(farm(0)) : window().connectionsList().onConnectionClick(0);
    askForCredentials();
    const auto task = flow().task;
    app->handleGetURLEvent("orvane://nonsense");
    mainQueue->pump();
    EXPECT_FALSE(task->isRunning());
    EXPECT_EQ(answers, isInDiMode ? std::vector<std::string>() : std::vector<std::string>{"none"});
    EXPECT_FALSE(desktop->isShown(Window::kCredentials));
    EXPECT_EQ(window().diMode(), nullptr);
    EXPECT_EQ(alerts.back(), "invalid URL");
    EXPECT_FALSE(window().welcomePlacement().has_value());
    end();
    mainQueue->pump();
  }
}

TEST_F(MainWindowTest, ALinkClosesAnAlertWhoseCompletionStillRuns) {
  startWithTwo();
  desktop->duringModalRun = [&](Window window) {
    if (alerts.empty()) app->handleGetURLEvent("orvane://nonsense");
    alerts.push_back(this->window().alert().text());
    if (alerts.size() > 1 && window == Window::kAlert) this->window().alert().onButtonClick(0);
  };
  window().connectionsList().onConnectionClick(0);
  fail(5, farm(0));
  EXPECT_THAT(alerts, ElementsAre("It failed.", "invalid URL"));
  EXPECT_FALSE(desktop->isAnyModal());
}

TEST_F(MainWindowTest, ALinkEndsAModalSessionUnderAnAlertToo) {
  startWithTwo();
  connect(0);
  window().mainMenu().onDiModeClick();
  window().diMode()->onFarmClick(farm(0));
  window().diMode()->onLogoutClick();
  desktop->duringModalRun = [&](Window) {
    app->handleGetURLEvent("orvane://autodetect/?autodetecturl=aHR0cDovL2Ix&farmguid=");
  };
  delegate()->brokerClientControllerDidFailConnect({5, "It failed."}, farm(1));
  mainQueue->pump();
  EXPECT_FALSE(desktop->isAnyModal());
  EXPECT_FALSE(desktop->isShown(Window::kConfirmation));
}

TEST_F(MainWindowTest, AFailedConnectIsToldByItsCode) {
  const struct {
    int code;
    bool isOfCurrentFarm, isAlert, staysConnected;
  } rows[] = {{2, true, false, true},
              {8, true, false, false},
              {7, true, true, false},
              {14, false, true, true},
              {8, false, false, true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.code);
    alerts.clear();
    startWithTwo();
    connect(0);
    window().onRefreshButtonClick();
    EXPECT_TRUE(desktop->isShown(Window::kProgress));
    fail(row.code, row.isOfCurrentFarm ? farm(0) : farm(1));
    EXPECT_FALSE(desktop->isShown(Window::kProgress));
    EXPECT_EQ(alerts.size(), row.isAlert ? 1U : 0U);
    EXPECT_EQ(window().currentFarm() != nullptr, row.staysConnected);
    EXPECT_EQ(window().isLogoutItemEnabled(), row.staysConnected);
    EXPECT_EQ(window().mainMenu().validateMenuItem(Item::kLogout), row.staysConnected);
    EXPECT_EQ(table().empty(), !row.staysConnected);
    end();
  }
}

TEST_F(MainWindowTest, APromptTakesTheProgressAwayAndBringsItBackIfItIsAnswered) {
  startWithTwo();
  for (const bool isAnswered : {true, false}) {
    window().connectionsList().onConnectionClick(0);
    askForCredentials();
    window().inputCredentials().setUserName("eva");
    isAnswered ? window().inputCredentials().onConnectClick() : window().inputCredentials().onCancelClick();
    EXPECT_EQ(acts(), std::string("sheet progress, end sheet progress, hide progress, sheet credentials, ") +
                          "end sheet credentials, hide credentials" + (isAnswered ? ", sheet progress" : ""));
    EXPECT_EQ(answers.back(), isAnswered ? "eva" : "none");
    window().progress().onCancelClick();
    acts();
  }
  EXPECT_TRUE(window().mainMenu().validateMenuItem(Item::kToggleSidePanel));
}

TEST_F(MainWindowTest, WhatComesOfACancelledTaskIsNotHeard) {
  startWithTwo();
  window().connectionsList().onConnectionClick(0);
  delegate()->brokerClientControllerDidConnectToFarm(farm(0), flow().location);  // on its way to the main thread
  delegate()->brokerClientControllerPromptCredentialsWithOldCredentials(
      {},
      [this, dropped = std::shared_ptr<void>(nullptr, [this](void*) { answers.push_back("dropped"); })](auto) {
        answers.push_back("answered");
      },
      false, nullptr);
  window().progress().onCancelClick();
  mainQueue->pump();
  EXPECT_EQ(window().currentFarm(), nullptr);
  EXPECT_THAT(answers, ElementsAre("dropped"));
  EXPECT_FALSE(desktop->isShown(Window::kCredentials));

  connect(0);
  window().applicationTable().handleAppTableItemViewClick(0, 2);
  window().applicationTable().handleAppTableItemViewClick(1, 2);
  const OvError error{10, "No program."};
  auto launch = flow();
  launch.completion(&error);
  window().progress().onCancelClick();
  mainQueue->pump();
  EXPECT_THAT(alerts, ElementsAre());
  window().applicationTable().handleAppTableItemViewClick(1, 2);
  flow().completion(&error);
  mainQueue->pump();
  EXPECT_THAT(alerts, ElementsAre("No program."));
}

TEST_F(MainWindowTest, ChoosingALocationComesFirst) {
  startWithTwo();
  window().connectionsList().onConnectionClick(1);
  EXPECT_EQ(acts(), "sheet location");
  window().chooseLocation().onCancelClick();
  EXPECT_TRUE(broker->flows.empty());
  window().connectionsList().onConnectionClick(1);
  window().chooseLocation().selectLocation(1);
  window().chooseLocation().onConnectClick();
  EXPECT_EQ(flow().location, farm(1)->locations().at(1));
  window().progress().onCancelClick();
  farm(1)->locations().clear();
  window().connectionsList().onConnectionClick(1);
  EXPECT_THAT(alerts, ElementsAre(orvane::localizedText("LocationTabController.EmptyLocationList")));
  EXPECT_EQ(broker->flows.size(), 1U);
}

TEST_F(MainWindowTest, CredentialsThatAreNotToBeSavedAreForgottenBeforeAConnect) {
  startWithTwo();
  farm(0)->credentials().setNeedToSave(false);
  window().connectionsList().onConnectionClick(0);
  EXPECT_TRUE(farm(0)->credentials().isEmpty());
}

TEST_F(MainWindowTest, AManualConnectStartsNoApplication) {
  auto only = farmNamed("A", {"one"});
  only->setAutoLaunchApps({"Thing"});
  store({only});
  for (const bool isByWelcomeFlow : {false, true}) {
    SCOPED_TRACE(isByWelcomeFlow);
    start();
    window().progress().onCancelClick();
    if (isByWelcomeFlow) {
      window().welcomeScreenDoneWithConnectedFarm(farm(0), farm(0)->locations().front(), nullptr);
      window().onRefreshButtonClick();
      tellConnected();
    } else {
      connect(0);
    }
    EXPECT_EQ(flow().kind,
              isByWelcomeFlow ? ScriptedOrchestration::Kind::kRefresh : ScriptedOrchestration::Kind::kConnect);
    end();
  }
}

TEST_F(MainWindowTest, ChangesOfTheStoreReachTheConnection) {
  const struct {
    const char* change;
    bool staysConnected;
  } rows[] = {{"rename", true}, {"remove other", true}, {"remove", false}, {"remove all", false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.change);
    startWithTwo();
    connect(0);
    const std::string change = row.change;
    const auto current = farm(0);
    if (change == "rename") {
      current->setName("Renamed");
      farmManager().notifyOnFarmChange(current);
    }
    if (change == "remove other") farmManager().removeFarm(farm(1));
    if (change == "remove") farmManager().removeFarm(current);
    if (change == "remove all") farmManager().removeAllFarms();
    mainQueue->pump();
    EXPECT_EQ(window().currentFarm(), row.staysConnected ? current : nullptr);
    EXPECT_EQ(window().windowTitle(), !row.staysConnected ? "Orvane" : change == "rename" ? "Renamed" : "A");
    EXPECT_EQ(broker->disconnects, 0);  // the sessions go on
    end();
  }
}

TEST_F(MainWindowTest, LoggingOut) {
  for (const bool asks : {true, false}) {
    startWithTwo();
    connect(0);
    settings().setAskBeforeLogoff(asks);
    window().mainMenu().onLogoutClick();
    if (asks) {
      window().confirmWindow().setShowAgainChecked(false);
      window().confirmWindow().onCancelClick();
      EXPECT_NE(window().currentFarm(), nullptr);
      EXPECT_FALSE(OrvaneSettings(home.file("settings.xml")).askBeforeLogoff());  // Cancel stores the box too
      window().mainMenu().onLogoutClick();
    }
    EXPECT_EQ(window().currentFarm(), nullptr);
    EXPECT_EQ(broker->disconnects, 1);
    EXPECT_TRUE(window().isSidePanelOpen());
    EXPECT_EQ(window().cover(), Cover::kGrey);
    EXPECT_EQ(window().activeConnectionLabel(), "");
    end();
  }
}

TEST_F(MainWindowTest, LoggingOutGoesStepByStep) {
  startWithTwo();
  connect(0);
  std::vector<std::string> steps;
  const auto step = [&](const std::string& name) {
    if (steps.empty() || steps.back() != name) steps.push_back(name);
  };
  struct SaveObserver : OvFarmManagerObserver {
    explicit SaveObserver(std::function<void()> tell) : onSave(std::move(tell)) {}
    void farmStateDidChange(FarmChange state, const std::shared_ptr<OvFarm>&) override {
      if (state == FarmChange::kSaved) onSave();
    }
    std::function<void()> onSave;
  };
  farm(0)->credentials().setCredentialsAreValid(true);
  window().mainMenu().onLogoutClick();
  const auto observer = std::make_shared<SaveObserver>([&] {
    step(std::string(desktop->attachedSheet() ? "saved before a sheet" : "saved") +
         (farm(0)->credentials().credentialsAreValid() ? " valid" : ""));
  });
  farmManager().addFarmObserver(observer);
  broker->onDisconnect = [&] { step("sessions"); };
  window().connectionsList().setOnChange([&] { step("no row is marked"); });
  window().applicationTable().setOnChange([&] { step("table"); });
  window().setOnFocus([&](MainWindowFocus) { step("side panel"); });
  window().confirmWindow().onOkClick();
  EXPECT_THAT(steps, ElementsAre("saved", "sessions", "no row is marked", "table", "side panel"));
}

TEST_F(MainWindowTest, TheModesKeepTheConnection) {
  startWithTwo();
  connect(0);
  acts();
  window().mainMenu().onDiModeClick();
  EXPECT_EQ(acts(),
            "add item, tool tip Orvane, picture DI_Mode-Icon_Wait, alternate picture DI_Mode-Icon_Active-White, hide "
            "main, policy 1");
  mainQueue->pump();
  EXPECT_EQ(acts(), "unhide");
  EXPECT_TRUE(OrvaneSettings(home.file("settings.xml")).diMode());
  EXPECT_EQ(window().diMode()->currentFarm(), farm(0));
  window().windowWillClose();
  EXPECT_FALSE(desktop->isTerminated);
  EXPECT_FALSE(app->applicationShouldHandleReopen());
  EXPECT_EQ(acts(), "");

  window().diMode()->onFarmClick(farm(1));  // free windows here
  EXPECT_EQ(acts(), "session location");
  window().chooseLocation().selectLocation(0);
  window().chooseLocation().onConnectClick();
  delegate()->brokerClientControllerShowUpdateWindowWithUpdateURL("https://u", true, "9", [](int) {});
  desktop->duringModalRun = [this](Window) { window().productUpdate().onCancelClick(); };
  mainQueue->pump();
  EXPECT_EQ(acts(), "end session location, hide location, run update, stop update");
  tellConnected();

  window().diMode()->onExpandedViewClick();
  EXPECT_EQ(acts(),
            "picture DI_Mode-Icon_Wait, picture DI_Mode-Icon_Wait, policy 0, activate, front main, remove item");
  EXPECT_FALSE(OrvaneSettings(home.file("settings.xml")).diMode());
  EXPECT_EQ(window().currentFarm(), farm(1));
  EXPECT_THAT(table(), ElementsAre("Games", "Office"));
  EXPECT_TRUE(window().mainMenu().validateMenuItem(Item::kLogout));

  desktop->isMiniaturized = true;
  app->applicationShouldHandleReopen();
  EXPECT_EQ(acts(), "deminiaturize main, show main");
}

TEST_F(MainWindowTest, AQuestionThatNobodyWaitsForOrAnotherReplacesIsCancelled) {
  startWithTwo();
  connect(0);
  window().mainMenu().onDiModeClick();
  mainQueue->pump();
  acts();
  window().diMode()->onLogoutClick();
  window().diMode()->onFarmClick(farm(1));
  EXPECT_EQ(acts(), "session confirmation, end session confirmation, hide confirmation, session location");
  window().confirmWindow().onOkClick();  // too late
  EXPECT_EQ(window().currentFarm(), farm(0));
  window().chooseLocation().onCancelClick();

  window().diMode()->onFarmClick(farm(0));
  askForCredentials();
  EXPECT_TRUE(desktop->isShown(Window::kCredentials));
  window().diMode()->onCancelConnectClick();
  EXPECT_THAT(answers, ElementsAre("none"));
  EXPECT_FALSE(desktop->isShown(Window::kCredentials));
}

TEST_F(MainWindowTest, ABadLinkLeavesTheSidePanelCovered) {
  startWithTwo();
  window().onConnectionsButtonClick();
  app->handleGetURLEvent("orvane://nonsense");
  mainQueue->pump();
  EXPECT_EQ(alerts.size(), 1U);
  EXPECT_TRUE(window().isSidePanelOpen());
  EXPECT_EQ(window().cover(), Cover::kGrey);
}

TEST_F(MainWindowTest, TheEditorEndsByItsState) {
  const struct {
    int state;
    std::vector<std::string> stored;
  } rows[] = {{-1, {"A", "B"}}, {0, {"A", "B", "C"}}, {1, {"B"}}, {3, {"Changed", "B"}}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.state);
    startWithTwo();
    farm(1)->setDoAutoLaunch(true);
    const auto edited = row.state == 0 ? farmNamed("C", {"one"}) : farm(0);
    if (row.state == 3) edited->setName("Changed");
    if (row.state != 1) edited->setDoAutoLaunch(true);
    window().connectionSettingsDidFinishEditing(edited, row.state);
    mainQueue->pump();
    EXPECT_FALSE(window().isConnectionSettingsViewShown());
    EXPECT_EQ(storedFarms(), row.stored);
    EXPECT_EQ(farmManager().farms().back()->doAutoLaunch(), row.state != 3);  // of others it is taken away
    end();
    std::filesystem::remove(storePath);
  }
}

TEST_F(MainWindowTest, HeldKeysChooseWhatTheListOpens) {
  for (const uint32_t keys : {0U, 0x20000U, 0x40000U, 0x60000U}) {
    SCOPED_TRACE(keys);
    startWithTwo();
    desktop->heldKeys = keys;
    window().onConnectionsButtonClick();
    window().connectionsList().onEditConnectionClick(0);
    EXPECT_EQ(window().connectionSettings().isAdvancedSectionShown(), keys == 0x60000U);
    EXPECT_TRUE(window().isConnectionSettingsViewShown());
    window().connectionSettings().onBackButtonClick();
    window().connectionsList().onAddConnectionClick();
    EXPECT_EQ(window().welcomePlacement() == MainWindowController::WelcomePlacement::kSidePanel, keys != 0x60000U);
    EXPECT_EQ(window().connectionSettings().isManualFarmMode(), keys == 0x60000U);
    EXPECT_TRUE(window().isToolbarVisible());
    end();
  }
}

TEST_F(MainWindowTest, SmallThings) {
  startWithTwo();
  EXPECT_EQ(window().windowWillResize({5000, 5000}).width, 800);
  EXPECT_EQ(window().windowWillResize({5000, 5000}).height, 900);
  EXPECT_EQ(window().windowWillResize({640, 480}).height, 480);
  window().onRefreshButtonClick();  // nothing to refresh
  EXPECT_TRUE(broker->flows.empty());
  window().brokerClientControllerShowNotificationWithTitle("", "Done.");
  EXPECT_EQ(acts(), "notify Orvane: Done.");
  EXPECT_TRUE(desktop->notificationsDelegate->userNotificationCenterShouldPresentNotification());
  window().mainMenu().onSettingsClick();
  window().connectionsList().onAboutClick();
  EXPECT_EQ(acts(), "show settings, show about");
  window().windowWillClose();
  EXPECT_EQ(acts(), "terminate");
}

TEST_F(MainWindowTest, LinksAndFilesDecideHowTheRunBegan) {
  const struct {
    const char* url;
    bool isLink;
  } rows[] = {{"orvane://x", true},
              {"ORVANE://x", true},
              {"helperorvane://x", true},
              {"HELPERORVANE://x", false},
              {"http://orvane://", false},
              {"orvane:x", false},
              {"", false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.url);
    store({farmNamed("A", {"one"}), farmNamed("B", {"one"})});
    start([&](AppDelegate& program) {
      program.handleGetURLEvent(row.url);
      program.applicationOpenFile(home.file("absent"));  // ends the run only if it began with it
    });
    EXPECT_EQ(app->applicationLaunchType(), row.isLink ? ApplicationLaunchType::kLink : ApplicationLaunchType::kFile);
    EXPECT_EQ(acts(), row.isLink ? "activate, show main" : "");
    desktop->duringModalRun = [this](Window window) {
      if (window == Window::kAlert) this->window().alert().onButtonClick(0);
      if (window == Window::kLaunchFileAlert) app->launchFileAlert().onButtonClick(0);
    };
    app->handleGetURLEvent("orvane://y");  // later ones change nothing of that
    mainQueue->pump();
    EXPECT_EQ(desktop->isTerminated, !row.isLink);
    desktop->isTerminated = false;
    acts();
    end();
  }
}

}  // namespace

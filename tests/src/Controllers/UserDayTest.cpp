// Whole days of a user, from the start of the program to its end, against a real broker.

#include <gmock/gmock.h>
#include <openssl/evp.h>

#include "BrokerOfDay.h"
#include "OrvaneCommon/LocalizedText.h"
#include "ProgramFixture.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

// A link that asks for the connection of an address.
std::string linkTo(const std::string& address) {
  char encoded[200] = {};
  EVP_EncodeBlock(reinterpret_cast<unsigned char*>(encoded), reinterpret_cast<const unsigned char*>(address.data()),
                  int(address.size()));
  return std::string("orvane://autodetect/?autodetecturl=") + encoded +
         "&farmguid=11111111-2222-3333-4444-555555555555";
}

class UserDayTest : public testing::Test, public ProgramFixture {
 protected:
  UserDayTest() {
    settings().setShowTutorialOnStart(false);
    settings().save();
  }

  bool untilTableIsShown() {
    return until([&] { return !table().empty() && !isBusy(); });
  }
  bool isBusy() {
    const auto& diMode = window().diMode();
    return window().progress().isAnimating() || (diMode && diMode->isAnimating());
  }
  bool untilStage(WelcomeStageView stage) {
    return until([&] { return welcome().currentStageView() == stage; });
  }
  void enterAddress(const std::string& address) {
    welcome().inputUrl().setUrlToConnect(address);
    welcome().inputUrl().onNextClick();
  }
  void enterCredentials(InputCredentialsViewController& page, const std::string& password) {
    page.setUserName("ann");
    page.setPassword(SecretText(password));
    page.onConnectClick();
  }
  // Opens a folder of the table and starts an application in it.
  void choose(const std::string& folder, const std::string& application) {
    for (const std::string& name : {folder, application}) {
      const auto names = table();
      const auto found = std::find(names.begin(), names.end(), name);
      ASSERT_NE(found, names.end()) << name;
      window().applicationTable().handleAppTableItemViewClick(size_t(found - names.begin()), 2);
    }
  }
  // The name of the launch file that a session program was started with since the last call, when all is done.
  std::string launched() {
    EXPECT_TRUE(until([&] { return !isBusy(); }));
    const std::lock_guard lock(launches.starter->mutex);
    const std::string command = std::exchange(launches.starter->command, {});
    const std::string path = command.substr(0, command.rfind('|'));
    return path.substr(path.rfind('/') + 1);  // all of an empty one
  }

  BrokerOfDay broker;
};

TEST_F(UserDayTest, FirstStart) {
  broker.assignConfiguration();
  settings().setShowTutorialOnStart(true);
  settings().save();
  start();
  EXPECT_EQ(acts(), "activate, show main");
  EXPECT_EQ(window().welcomePlacement(), MainWindowController::WelcomePlacement::kWholeWindow);
  EXPECT_FALSE(window().isToolbarVisible());
  EXPECT_EQ(window().windowTitle(), "");
  EXPECT_FALSE(window().mainMenu().validateMenuItem(MainMenuController::Item::kToggleSidePanel));

  enterAddress("http://127.0.0.1:1");  // nobody is there
  ASSERT_TRUE(untilStage(WelcomeStageView::kAddress));
  EXPECT_TRUE(welcome().inputUrl().errorText().has_value());
  enterAddress(broker.url());
  ASSERT_TRUE(untilStage(WelcomeStageView::kCredentials));
  enterCredentials(welcome().inputCredentials(), "wrong");
  ASSERT_TRUE(untilStage(WelcomeStageView::kProgress));
  ASSERT_TRUE(untilStage(WelcomeStageView::kCredentials));
  EXPECT_TRUE(welcome().inputCredentials().errorText().has_value());
  enterCredentials(welcome().inputCredentials(), "secret");
  ASSERT_TRUE(untilTableIsShown());

  EXPECT_THAT(table(), ElementsAre("Games", "Office"));
  EXPECT_FALSE(window().welcomePlacement().has_value());
  EXPECT_EQ(window().activeConnectionLabel(), "Home");
  EXPECT_TRUE(window().isToolbarVisible());
  EXPECT_THAT(storedFarms(), ElementsAre("Home"));
  EXPECT_TRUE(window().isTutorialShown());
  EXPECT_FALSE(window().isLogoutItemEnabled());
  for (int page = 0; page < TutorialViewController::kPageCount; ++page) window().tutorial().onNextPageClicked();
  EXPECT_FALSE(window().isTutorialShown());
  EXPECT_TRUE(window().isLogoutItemEnabled());

  choose("Office", "Editor");
  EXPECT_EQ(launched(), "edit");
  window().windowWillClose();
  EXPECT_TRUE(desktop->isTerminated);
}

TEST_F(UserDayTest, ASkippedFirstStartLeavesAnEmptyWindow) {
  start();
  welcome().inputUrl().onCancelClick();
  EXPECT_FALSE(window().welcomePlacement().has_value());
  EXPECT_TRUE(window().isToolbarVisible());
  EXPECT_TRUE(window().isConnectionsItemEnabled());
  EXPECT_FALSE(window().isLogoutItemEnabled());
  EXPECT_THAT(table(), IsEmpty());
}

TEST_F(UserDayTest, TheOnlyFarmConnectsBehindTheTutorialAndStartsItsApplication) {
  settings().setShowTutorialOnStart(true);
  settings().save();
  store({broker.farm("Work", false, {"Office", "Chess", "Editor"})});  // no folder, and only the first
  start();
  mainQueue->pump();
  EXPECT_THAT(broker.requests(), IsEmpty());
  window().tutorial().setShowOnStartChecked(false);
  window().tutorial().onSkipClicked();
  EXPECT_FALSE(settings().showTutorialOnStart());
  ASSERT_TRUE(untilTableIsShown());
  EXPECT_EQ(launched(), "chess");
  EXPECT_THAT(acts(), HasSubstr("sheet progress, end sheet progress, hide progress"));

  window().onRefreshButtonClick();  // never starts it again
  EXPECT_EQ(launched(), "");
  EXPECT_EQ(broker.requests("getapplicationlist").size(), 2U);
}

TEST_F(UserDayTest, OfSeveralTheAutoLaunchedFarmConnectsAtOnce) {
  store({broker.farm("First"), broker.farm("Second", true)});
  start();
  ASSERT_TRUE(untilTableIsShown());
  EXPECT_EQ(window().currentFarm(), farmManager().farms().at(1));
  EXPECT_TRUE(window().connectionsList().rows().at(1).isConnected());
  EXPECT_FALSE(window().connectionsList().rows().at(0).isConnected());
}

TEST_F(UserDayTest, OfSeveralNoneConnectsByItselfAndTheUserChanges) {
  store({broker.farm("First"), broker.farm("Second", false, {"Editor"})});
  start();
  EXPECT_EQ(acts(), "activate, show main");
  window().onConnectionsButtonClick();
  EXPECT_TRUE(window().isSidePanelOpen());
  EXPECT_EQ(window().cover(), MainWindowController::Cover::kGrey);
  window().connectionsList().onConnectionClick(0);
  ASSERT_TRUE(untilTableIsShown());
  const auto& farms = farmManager().farms();
  EXPECT_EQ(window().windowTitle(), "Home");  // as the broker calls it
  EXPECT_FALSE(window().isSidePanelOpen());

  window().connectionsList().onConnectionClick(1);  // while connected; by hand, so that nothing starts
  EXPECT_EQ(window().currentFarm(), farms.at(0));
  ASSERT_TRUE(until([&] { return window().currentFarm() == farms.at(1) && !isBusy(); }));
  EXPECT_EQ(launched(), "");
  EXPECT_TRUE(window().connectionsList().rows().at(1).isConnected());
}

TEST_F(UserDayTest, ALinkAtTheStartTakesOver) {
  broker.assignConfiguration();
  store({broker.farm("Work")});
  settings().setShowTutorialOnStart(true);
  settings().setDiMode(true);
  settings().save();
  start([&](AppDelegate& program) { program.handleGetURLEvent("helper" + linkTo(broker.url())); });
  EXPECT_EQ(acts(), "activate, show main");
  EXPECT_EQ(app->applicationLaunchType(), ApplicationLaunchType::kLink);
  ASSERT_TRUE(untilStage(WelcomeStageView::kCredentials));
  EXPECT_EQ(window().welcomePlacement(), MainWindowController::WelcomePlacement::kWholeWindow);

  app->handleGetURLEvent(linkTo("http://127.0.0.1:1"));  // dropped: one is under way
  enterCredentials(welcome().inputCredentials(), "secret");
  ASSERT_TRUE(untilStage(WelcomeStageView::kConfirmation));
  welcome().connectOnStartConfirmation().setAutolaunched(true);
  welcome().connectOnStartConfirmation().onDoneClick();
  EXPECT_EQ(window().currentFarm()->name(), "Home");
  EXPECT_EQ(farmManager().autolaunchedFarm(), window().currentFarm());
  EXPECT_FALSE(window().isTutorialShown());  // there are two
}

TEST_F(UserDayTest, ALaunchFileAtTheStartIsAllThereIs) {
  store({broker.farm("Work")});
  OvSettings record;
  const std::string path = home.file("alone.ovl");
  ASSERT_EQ(record.saveOvlFile(path.c_str()), 1);
  start([&](AppDelegate& program) { EXPECT_TRUE(program.applicationOpenFile(path)); });
  ASSERT_TRUE(until([&] { return desktop->isTerminated; }));
  EXPECT_EQ(acts(), "terminate");
  EXPECT_EQ(launched(), "alone.ovl");
  EXPECT_THAT(broker.requests(), IsEmpty());
}

TEST_F(UserDayTest, AnUnreadableLaunchFileIsToldBeforeTheEnd) {
  desktop->duringModalRun = [&](FakeDesktop::Window window) {
    EXPECT_EQ(window, FakeDesktop::Window::kLaunchFileAlert);
    EXPECT_EQ(app->launchFileAlert().text(),
              orvane::localizedText("OvBrokerClientController.Error.LoadSettingsFromOvl"));
    EXPECT_FALSE(desktop->isTerminated);
    app->launchFileAlert().onButtonClick(0);
  };
  start([&](AppDelegate& program) { program.applicationOpenFile(home.file("absent.ovl")); });
  ASSERT_TRUE(until([&] { return desktop->isTerminated; }));
  EXPECT_EQ(acts(), "run launchFileAlert, stop launchFileAlert, terminate");
}

TEST_F(UserDayTest, DesktopIntegration) {
  store({broker.farm("Work", true), broker.farm("Other")});
  settings().setDiMode(true);
  settings().setShowTutorialOnStart(true);
  settings().save();
  start();
  EXPECT_EQ(acts(),
            "activate, add item, tool tip Orvane, picture DI_Mode-Icon_Wait, alternate picture "
            "DI_Mode-Icon_Active-White, hide main, policy 1");
  const auto menu = [&](size_t entry) { return window().diMode()->menu().at(entry); };
  EXPECT_TRUE(window().diMode()->isAnimating());
  EXPECT_TRUE(menu(4).isEnabled);  // cancel
  ASSERT_TRUE(untilTableIsShown());
  EXPECT_EQ(menu(8).title, "Home");
  ASSERT_EQ(menu(8).submenu.at(1).title, "Office");
  window().diMode()->onClick(menu(8).submenu.at(1).submenu.at(0));
  EXPECT_EQ(launched(), "calc");

  window().diMode()->onClick(menu(3));  // log out
  EXPECT_TRUE(desktop->isShown(FakeDesktop::Window::kConfirmation));
  window().confirmWindow().setShowAgainChecked(false);
  window().confirmWindow().onCancelClick();
  EXPECT_NE(window().currentFarm(), nullptr);
  EXPECT_FALSE(settings().askBeforeLogoff());
  window().diMode()->onClick(menu(3));  // without a question now
  EXPECT_EQ(window().currentFarm(), nullptr);
  EXPECT_EQ(window().diMode()->menu().size(), 7U);

  broker.addFault({.kind = orvane::demo::Fault::Kind::kStall, .request = "brokerinfo", .times = 0});
  window().diMode()->onClick(menu(0).submenu.at(1));
  window().diMode()->onClick(menu(4));  // cancel connecting
  EXPECT_FALSE(window().diMode()->isAnimating());
  broker.clearFaults();
  broker.releaseStalled();

  acts();
  window().diMode()->onClick(menu(1));  // expanded view
  EXPECT_EQ(window().diMode(), nullptr);
  EXPECT_FALSE(settings().diMode());
  EXPECT_EQ(acts(), "picture DI_Mode-Icon_Wait, policy 0, activate, front main, remove item");
}

TEST_F(UserDayTest, LogOut) {
  store({broker.farm("Work")});
  start();
  ASSERT_TRUE(untilTableIsShown());
  acts();
  window().onLogoutButtonClick();
  EXPECT_THAT(window().confirmWindow().text(), HasSubstr("Home"));
  window().confirmWindow().onOkClick();
  EXPECT_EQ(acts(), "sheet confirmation, end sheet confirmation, hide confirmation");
  EXPECT_EQ(window().currentFarm(), nullptr);
  EXPECT_EQ(window().currentLocation(), nullptr);
  EXPECT_FALSE(window().isLogoutItemEnabled());
  EXPECT_FALSE(window().mainMenu().validateMenuItem(MainMenuController::Item::kRefresh));
  EXPECT_TRUE(window().isSidePanelOpen());
  EXPECT_TRUE(window().isConnectionsItemEnabled());
  EXPECT_THAT(table(), IsEmpty());
  const OvCredentials& credentials = farmManager().farms().front()->credentials();
  EXPECT_FALSE(credentials.credentialsAreValid());
  EXPECT_EQ(credentials.username(), "ann");

  window().connectionsList().onConnectionClick(0);  // asks for the password that it forgot
  ASSERT_TRUE(until([&] { return desktop->attachedSheet() == FakeDesktop::Window::kCredentials; }));
  enterCredentials(window().inputCredentials(), "secret");
  ASSERT_TRUE(untilTableIsShown());
}

TEST_F(UserDayTest, QuitInTheMiddleOfAConnect) {
  broker.addFault({.kind = orvane::demo::Fault::Kind::kStall, .request = "authenticate", .times = 0});
  store({broker.farm("Work")});
  start();
  ASSERT_TRUE(until([&] { return !broker.requests("authenticate").empty() || mainQueue->size() == 0; }));
  const std::weak_ptr<OvFarm> farm = farmManager().farms().front();
  const auto queue = farmManager().farms().front()->brokerClientDispatchQueue();
  window().windowWillClose();
  EXPECT_TRUE(desktop->isTerminated);
  end();
  EXPECT_THAT(storedFarms(), ElementsAre("Work"));  // as it was
  broker.stop();
  auto isDone = std::make_shared<std::atomic<bool>>(false);
  queue->post([isDone, main = mainQueue] { main->post([isDone] { *isDone = true; }); });
  ASSERT_TRUE(until([&] { return isDone->load(); }));
  mainQueue->pump();
  EXPECT_THAT(acts(), testing::Not(HasSubstr("alert")));  // nobody is told of what comes after the end
  EXPECT_TRUE(farm.expired());
}

}  // namespace

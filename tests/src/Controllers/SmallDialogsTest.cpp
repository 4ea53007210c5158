#include <pugixml.hpp>
#include <tuple>

#include <gmock/gmock.h>

#include "Controllers/AboutWindowController.h"
#include "Controllers/AlertViewController.h"
#include "Controllers/ConfirmWindowController.h"
#include "Controllers/ProductUpdateWindowController.h"
#include "Controllers/ProgressAnimationViewController.h"
#include "Controllers/SettingsWindowController.h"
#include "Controllers/TutorialViewController.h"
#include "OrvaneCommon/LocalizedText.h"
#include "OrvaneCommon/OvUVersions.h"
#include "Support/FakeDesktop.h"
#include "Support/FakeOpener.h"
#include "Support/HomeOfTest.h"
#include "Support/OvWriteLog.h"

namespace {

using testing::ElementsAre;
using Window = orvane::AuxiliaryWindow;
using Box = SettingsWindowController::Box;

class ProductUpdateWindowControllerTest : public testing::Test {
 protected:
  void ask(const std::string& name, bool isRequired, std::function<void()> atAnswer = {}) {
    auto choose = [this, name, atAnswer, held = held](int choice) {
      answers += name + " " + std::to_string(choice) + "; ";
      if (atAnswer) atAnswer();
    };
    prompt.showUpdateWindowOnParent(orvane::WindowParent::kMainWindow, "https://updates.test/" + name, isRequired,
                                    "08.06.01", std::move(choose));
  }

  const HomeOfTest home;
  const std::shared_ptr<PumpedQueue> globalQueue = std::make_shared<PumpedQueue>();
  const std::shared_ptr<FakeOpener> opener = std::make_shared<FakeOpener>();
  FakeDesktop desktop{std::make_shared<PumpedQueue>()};
  std::string answers;
  const std::shared_ptr<int> held = std::make_shared<int>();  // by each callback
  ProductUpdateWindowController prompt{desktop, opener, globalQueue};
};

TEST_F(ProductUpdateWindowControllerTest, EachWayOutAnswersOnceAndEndsTheRun) {
  using Act = std::function<void()>;
  const Act installs = [this] { prompt.onInstallClick(); }, cancels = [this] { prompt.onCancelClick(); };
  const Act resets = [this] { prompt.resetContentWithBlockPerform(true); };
  const std::tuple<bool, Act, const char*> rows[] = {
      {true, installs, "farm 0; "},
      {false, cancels, "farm 2; "},
      {true, cancels, "farm 1; "},
      {false, resets, "farm 1; "},
      {true, [this] { prompt.resetContentWithBlockPerform(false); }, ""},
      {true, [this] { desktop.stopModal(Window::kUpdate); }, ""},
  };
  for (const auto& [isRequired, leave, answer] : rows) {
    desktop.duringModalRun = [leave = leave](Window) { leave(); };
    ask("farm", isRequired);
    installs(), cancels(), resets();  // of a window that is closed
    EXPECT_EQ(std::exchange(answers, {}), answer);
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_THAT(desktop.takeActs(), ElementsAre("run update on main", "stop update"));
  }
  EXPECT_TRUE(opener->takeActions().empty()) << "on the main thread";
  globalQueue->pump();
  EXPECT_THAT(opener->takeActions(), ElementsAre("open https://updates.test/farm"));
}

TEST_F(ProductUpdateWindowControllerTest, AQuestionInPlaceOfAnotherGoesOnInItsRun) {
  std::string drawn;
  prompt.setOnChange([&] { drawn = prompt.title() + " [" + prompt.cancelButtonTitle() + "]"; });
  const std::string installed = "Installed is version " + OvU_GetConnectorVesrion();
  desktop.duringModalRun = [&](Window) {
    EXPECT_EQ(drawn,
              "This connection needs a newer version of Orvane. " + installed + ", needed is version 8.6.1. [Cancel]");
    ask("second", false, [&] { ask("third", true); });
    EXPECT_EQ(drawn, "A newer version of Orvane is available. " + installed + ", available is version 8.6.1. [Later]");
    EXPECT_EQ(held.use_count(), 2);
    prompt.onInstallClick(), prompt.onCancelClick();
  };
  ask("first", true);
  EXPECT_EQ(answers, "second 0; third 1; ");
  EXPECT_THAT(desktop.acts(), ElementsAre("run update on main", "stop update"));
}

TEST_F(ProductUpdateWindowControllerTest, AQuestionBehindAnAnswerWaitsForTheRunsInsideItsOwn) {
  int runs = 0;
  desktop.duringModalRun = [&](Window window) {
    if (window == Window::kUpdate) {
      return ++runs == 1 ? desktop.runModal(Window::kAlert, orvane::WindowParent::kNone) : prompt.onCancelClick();
    }
    prompt.resetContentWithBlockPerform(true);
    ask("second", false);
    prompt.onCancelClick();  // of the window that is closed
    desktop.stopModal(Window::kAlert);
  };
  ask("first", true);
  EXPECT_EQ(answers, "first 1; second 2; ");
  EXPECT_EQ(runs, 2);
}

TEST_F(ProductUpdateWindowControllerTest, VersionsLoseTheirLeadingZeros) {
  std::string shown;
  for (const char* version : {"08.06.01", "8.x.010", "", "8.06-rc2. 7", "8.20260101123059."}) {
    shown += prompt.removeForwardZeroesFromString(version, ".") + " ";
  }
  EXPECT_EQ(shown, "8.6.1 8.0.10 0 8.6.7 8.20260101123059.0 ");
}

class SettingsWindowControllerTest : public testing::Test {
 protected:
  const HomeOfTest home;
  const std::string file = home.file("settings");
  OrvaneSettings settings{file};
  FakeDesktop desktop{std::make_shared<PumpedQueue>()};
  SettingsWindowController window{settings, desktop, desktop};
};

TEST_F(SettingsWindowControllerTest, EachBoxStandsForItsPreferenceAlone) {
  const char* const elements[] = {"showTutorialOnStart",       "neededToLog",
                                  "enableAdaptiveGraphics",    "fullscreenInMaximizedWindow",
                                  "forceDisableSeamless",      "translateCtrlLeftClickToRightClick",
                                  "askBeforeCloseSession",     "askBeforeLogoff",
                                  "askBeforeClearCredentials", "askBeforeDeleteConnection"};
  ASSERT_EQ(std::size(elements), size_t(Box::kStartAtLogin));
  for (size_t checked = 0; checked < std::size(elements); ++checked) {
    for (size_t i = 0; i < std::size(elements); ++i) window.setChecked(Box(i), i == checked);
    window.onDoneClick(), window.setChecked(Box(checked), false);
    window.setupSettingsWindow();
    pugi::xml_document saved;
    ASSERT_TRUE(saved.load_file(file.c_str()));
    for (size_t i = 0; i < std::size(elements); ++i) {
      EXPECT_EQ(saved.document_element().child(elements[i]).text().as_bool(), i == checked) << elements[i];
      EXPECT_EQ(window.isChecked(Box(i)), i == checked) << elements[i];
    }
  }
}

TEST_F(SettingsWindowControllerTest, DoneKeepsWhatElseTheFileSaysByNow) {
  OrvaneSettings elsewhere(file);
  for (const auto& [asks, logsOff, label] :
       {std::tuple(true, true, "asked"), {false, true, "logged off"}, {false, false, "go on"}}) {
    elsewhere.setAskBeforeCloseSession(asks);
    elsewhere.setLogoffOnQuit(logsOff);
    elsewhere.setActionOnResolutionChange(2);
    elsewhere.save();
    window.setupSettingsWindow();
    EXPECT_THAT(window.closingLabel(), testing::HasSubstr(label));
  }
  EXPECT_EQ(window.actionOnResolutionChange(), 2);
  window.setActionOnResolutionChange(1);
  elsewhere.setDiMode(true);
  elsewhere.save();
  window.onDoneClick();
  elsewhere.load();
  EXPECT_EQ(elsewhere.actionOnResolutionChange(), 1);
  EXPECT_TRUE(elsewhere.diMode());
}

TEST_F(SettingsWindowControllerTest, TheDesktopIsToldOnlyOfAChangeOfTheStartAtLogin) {
  std::string acts;
  for (const bool wasOn : {false, true}) {
    for (const bool isChecked : {false, true}) {
      desktop.startsAtLogin = wasOn;
      window.setupSettingsWindow();
      EXPECT_EQ(window.isChecked(Box::kStartAtLogin), wasOn);
      desktop.startsAtLogin = false;  // elsewhere
      window.setChecked(Box::kStartAtLogin, isChecked);
      window.onCancelClick(), window.onDoneClick();
      for (const std::string& act : desktop.takeActs()) acts += act == "hide settings" ? "." : act;
    }
  }
  EXPECT_EQ(acts, "...autostart 1..autostart 0...");
}

TEST_F(SettingsWindowControllerTest, LoggingFollowsTheBoxAtDoneAndNeverAtCancel) {
  OvSetLogFile(home.file("log").c_str());
  OvSetLogLevel(0);
  const auto levelsLogged = [&](bool isLogging, void (SettingsWindowController::*click)()) {
    window.setupSettingsWindow();
    window.setChecked(Box::kLogging, isLogging);
    (window.*click)();
    EXPECT_THAT(desktop.takeActs(), ElementsAre("hide settings"));
    for (const int level : {4, 5}) OvWriteLog(level, "%d", level);
    return std::filesystem::exists(home.file("log")) ? contentOf(home.file("log")) : "none";
  };
  EXPECT_EQ(levelsLogged(true, &SettingsWindowController::onCancelClick), "none");
  EXPECT_THAT(levelsLogged(true, &SettingsWindowController::onDoneClick), testing::EndsWith(": 4\n"));
  EXPECT_THAT(levelsLogged(false, &SettingsWindowController::onCancelClick), testing::EndsWith(": 4\n"));
  EXPECT_EQ(levelsLogged(false, &SettingsWindowController::onDoneClick), "none");
  OvSetLogFile("");
}

TEST(AboutWindowControllerTest, HasTwoPagesAndOpensLinksOutside) {
  const HomeOfTest home;
  const auto queue = std::make_shared<PumpedQueue>();
  const auto opener = std::make_shared<FakeOpener>();
  AboutWindowController window(opener, queue);
  std::vector<std::string> drawn;
  window.setOnChange([&] { drawn.push_back(window.windowTitle()); });
  window.setupAboutWindow(), window.handleLegalInfoClick(), window.handleBackClick();
  EXPECT_THAT(drawn, ElementsAre("About Orvane", "Legal information", "About Orvane"));
  EXPECT_THAT(window.versionText(), testing::MatchesRegex("Version [0-9.]+ \\(build [0-9]+\\)"));
  EXPECT_FALSE(window.handleLegalLinkClick("https://library.test/"));
  window.handleHelpClick();
  EXPECT_TRUE(opener->takeActions().empty()) << "on the main thread";
  queue->pump();
  EXPECT_THAT(opener->takeActions(),
              ElementsAre("open https://library.test/", "open https://help.orvane.example/en/connector"));
  std::string shown;
  for (const char* release : {"8.6.0", "8.6.1", "8.0.010", "8.6.00.0", "8.6.rc1", "8", "0"}) {
    shown += window.getOrvaneVersion(release) + " ";
  }
  EXPECT_EQ(shown, "8.6 8.6.1 8.0.010 8.6.00 8.6 8  ");
}

TEST(AboutWindowControllerTest, TheLegalPageIsWellFormedInEachLanguage) {
  const HomeOfTest home;
  pugi::xml_document page;
  for (const char* language : {"de", "es", "fr", "ja", "ko", "zh-Hans", "zh-Hant"}) {
    EXPECT_TRUE(page.load_string(("<a>" + orvane::localizedText("LegalText", language) + "</a>").c_str())) << language;
    EXPECT_STREQ(page.select_node("/a/ul").node().text().get(), "%@") << language;
  }
  EXPECT_TRUE(page.load_string(("<a>" + AboutWindowController(nullptr, nullptr).legalText() + "</a>").c_str()));
  EXPECT_EQ(page.select_nodes("/a/ul/li/a[starts-with(@href, 'http')][text()]").size(), 10u);
}

TEST(ConfirmWindowControllerTest, EachWayOutTellsTheBoxOnce) {
  ConfirmWindowController window;
  std::string answers;
  const auto ask = [&] {
    window.setupWindowWithConfirmationText("Really?", [&](bool isConfirmed, bool isBoxChecked) {
      answers += std::string(isConfirmed ? "yes" : "no") + (isBoxChecked ? "+ " : "- ");
      window.onOkClick();
    });
  };
  ask(), window.onOkClick();
  ask(), window.setShowAgainChecked(false), window.onCancelClick();
  ask(), window.resetContentWithBlockPerform(true);
  ask(), window.resetContentWithBlockPerform(false), window.onOkClick();
  EXPECT_EQ(answers, "yes+ no- no+ ");
}

TEST(AlertViewControllerTest, AClickTellsTheButtonsIndexOnce) {
  const HomeOfTest home;
  AlertViewController alert;
  std::vector<int> answers;
  const auto prepare = [&](std::vector<std::string> titles, bool asWindow) {
    const auto tell = [&](int button) { answers.push_back(button); };
    alert.prepareAlertWithTitle("", "", std::move(titles), tell, asWindow);
    EXPECT_EQ(alert.isTitleHidden(), asWindow);
  };
  prepare({}, false);
  EXPECT_THAT(alert.buttonTitles(), ElementsAre("OK"));
  for (const int button : {1, -1, 0, 0}) alert.onButtonClick(button);
  prepare({"Keep", "Remove", "Ask"}, true);
  EXPECT_THAT(alert.buttonTitles(), ElementsAre("Keep", "Remove", "Ask"));
  alert.onButtonClick(2);
  alert.resetContentWithBlockPerform(true);
  EXPECT_THAT(alert.buttonTitles(), ElementsAre("Keep"));
  prepare({}, true), alert.resetContent(), alert.onButtonClick(0);
  const auto anew = [&] { prepare({"Anew"}, true); };
  alert.prepareAlertWithTitle("", "", anew, true);
  alert.resetContentWithBlockPerform(true);  // whose completion prepares the next
  EXPECT_THAT(alert.buttonTitles(), ElementsAre("Anew"));
  alert.resetContentWithBlockPerform(true);
  EXPECT_THAT(answers, ElementsAre(0, 2, 0x7FFFFFFF));
}

TEST(ProgressAnimationViewControllerTest, CancelRunsTheActionOnceAndStops) {
  ProgressAnimationViewController progress;
  int cancelled = 0;
  const auto start = [&] { progress.startProgressWithCancelBlock([&] { ++cancelled; }); };
  start(), progress.setDescription("Logging in"), progress.onCancelClick(), progress.onCancelClick();
  EXPECT_FALSE(progress.isAnimating());
  EXPECT_EQ(progress.description(), "Logging in");
  start();
  EXPECT_EQ(progress.description(), "");
  progress.stopProgress(), progress.onCancelClick();
  EXPECT_EQ(cancelled, 1);
  progress.startProgressWithCancelBlock(start), progress.onCancelClick();
  EXPECT_TRUE(progress.isAnimating());
  progress.onCancelClick();
  EXPECT_EQ(cancelled, 2);
}

TEST(TutorialViewControllerTest, LeadsThroughItsPagesAndStoresTheBoxAtTheEnd) {
  const HomeOfTest home;
  const std::string file = home.file("settings");
  OrvaneSettings settings(file);
  TutorialViewController tutorial(settings);
  std::vector<int> drawn;
  int finished = 0;
  const auto begin = [&] {
    tutorial.setupTutorialWithFinishBlock([&] { ++finished; });
    EXPECT_EQ(tutorial.isShowOnStartChecked(), settings.showTutorialOnStart());
    tutorial.setShowOnStartChecked(!settings.showTutorialOnStart());
  };
  const auto isStored = [&] { return OrvaneSettings(file).showTutorialOnStart(); };
  begin();
  tutorial.setOnChange([&] { drawn.push_back(tutorial.page()); });
  for (const int page : {3, 4, -1, 1}) tutorial.onPageSelected(page);
  EXPECT_EQ(tutorial.pageTitle(), "Your applications");
  tutorial.cancelStartupTips(), tutorial.onSkipClicked();
  EXPECT_TRUE(isStored());
  begin();
  for (int click = 0; click <= TutorialViewController::kPageCount; ++click) tutorial.onNextPageClicked();
  EXPECT_FALSE(isStored());
  EXPECT_EQ(finished, 1);
  EXPECT_THAT(drawn, ElementsAre(3, 1, 1, 0, 0, 1, 2, 3));
  begin(), tutorial.onSkipClicked();
  EXPECT_TRUE(isStored());
  EXPECT_EQ(finished, 2);
}

}  // namespace

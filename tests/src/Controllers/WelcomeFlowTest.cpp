#include <sstream>

#include <gtest/gtest.h>

#include "Controllers/WelcomeScreenViewController.h"
#include "Support/FakeDesktop.h"
#include "Support/FakeOpener.h"
#include "Support/FakeTimer.h"
#include "src/Orchestration/ConnectFixture.h"

namespace {

using Mode = WelcomeScreenMode;
using Words = std::vector<std::string>;

constexpr int kLogInFirst = orvane::demo::kCapabilityUtf8 | orvane::demo::kCapabilityConnectorInfo |
                            orvane::demo::kCapabilityConnectorInfoNeedsLogIn;

// The flow before a broker, with a user who takes one step after the other.
class Journey : public ConnectFixture, public WelcomeScreenDelegate {
 public:
  Journey() {
    flow->setOnChange([this] {
      const char page = ".APCLO"[int(flow->currentStageView())];
      if (page != '.' && (pages.empty() || pages.back() != page)) pages += page;
    });
  }

  // The steps: "first", "add" and "link" begin, "stop" cancels the progress at once; the others wait for a page. There
  // "url" and "bad" are addresses, "ann" and "bob" users (the broker knows ann), "at:NAME" is a location, "on" and
  // "off" are the confirmation; "next" takes what the page holds, "back" is its other button.
  void walk(const std::string& steps) {
    static const std::map<std::string, Mode> kModes = {
        {"add", Mode::kAddConnection}, {"first", Mode::kFirstStart}, {"link", Mode::kLink}};
    std::istringstream words(steps);
    for (std::string step; words >> step;) {
      if (const auto mode = kModes.find(step); mode != kModes.end()) {
        flow->setupWelcomeScreenWithURL(step == "link" ? broker.url() : "", "{S}", mode->second);
        EXPECT_EQ(flow->inputUrl().cancelTitle() + flow->inputCredentials().backTitle(),
                  step == "add" ? "CancelCancel" : "SkipBack");
      } else if (step == "stop") {
        flow->progress().onCancelClick();
      } else {
        ASSERT_TRUE(arrive());
        take(step);
      }
    }
  }
  bool arrive() {
    if (!mainQueue->pumpUntil([&] { return flow->currentStageView() != WelcomeStageView::kProgress; })) return false;
    EXPECT_EQ(flow->connectOnStartConfirmation().confirmationText(),
              flow->currentStageView() == WelcomeStageView::kConfirmation
                  ? "Connect to Theirs every time Orvane starts?"
                  : "");
    const bool isError = flow->inputUrl().errorText().has_value();
    if (isError) pages += "!";
    EXPECT_EQ(flow->inputUrl().nextTitle() + flow->inputCredentials().nextTitle(), isError ? "RetryRetry" : "NextNext");
    return true;
  }

  // A configuration file at the broker's root, of a farm that a broker manages or not.
  void serveFile(const Words& locations, std::optional<int> capabilities, bool isManaged = false) {
    assign(0, "", locations);
    setCapabilities(capabilities);
    broker.changeFarm([&](auto& changed) {
      changed.configuration.reset();
      changed.files.front().path = "config.xml";
      std::string& content = changed.files.front().content;
      if (!isManaged) content.replace(content.find("ConfigDBGUID=\"G\""), 16, "");
    });
  }
  // A farm of the store that a link names.
  void knowLinked() { farm->setFarmDBGUID("{S}"), manage({"Office"}), know(), assign(0), setCapabilities(kLogInFirst); }

  void welcomeScreenDoneWithConnectedFarm(const std::shared_ptr<OvFarm>& connected,
                                          const std::shared_ptr<OvLocation>& at,
                                          const std::shared_ptr<AppFolderItem>& receivedApps) override {
    flow->resetContent();
    EXPECT_EQ(describe(*connected), "Theirs@" + at->name() + " ann");
    EXPECT_EQ(receivedApps->appItems().size(), 1U);
    told += "done;";
  }
  void welcomeScreenCancelWithError(const OvError* error) override {
    flow->resetContent();
    told += error == nullptr ? "cancelled;" : "failed " + std::to_string(error->code) + ";";
  }
  void welcomeScreenWantsShowNotificationWithTitle(const std::string& title, const std::string&) override {
    told += title + ";";
  }

  FakeDesktop desktop{mainQueue};
  ProductUpdateWindowController updateWindow{desktop, std::make_shared<FakeOpener>(), mainQueue};
  const std::shared_ptr<WelcomeScreenViewController> flow =
      WelcomeScreenViewController::create(controller, *this, updateWindow, std::make_shared<FakeTimer>(), mainQueue);
  std::string pages;  // Address, Progress, Credentials, Location, cOnfirmation, with "!" if there is an error
  std::string told;   // to the delegate

 private:
  void take(const std::string& step) {
    if (step == "url" || step == "bad") {
      flow->inputUrl().setUrlToConnect(step == "url" ? broker.url() : "http://127.0.0.1:65536");
      flow->inputUrl().onNextClick();
    } else if (step == "ann" || step == "bob") {
      flow->inputCredentials().setUserName(step);
      flow->inputCredentials().setPassword("secret");
      flow->inputCredentials().setNeedToSave(true);
      flow->inputCredentials().onConnectClick();
    } else if (step.starts_with("at:")) {
      const Words names = flow->chooseLocation().locationNames();
      flow->chooseLocation().selectLocation(size_t(std::ranges::find(names, step.substr(3)) - names.begin()));
      flow->chooseLocation().onConnectClick();
    } else if (step == "on" || step == "off") {
      flow->connectOnStartConfirmation().setAutolaunched(step == "on");
      flow->connectOnStartConfirmation().onDoneClick();
    } else if (step == "next") {
      flow->inputUrl().onNextClick(), flow->inputCredentials().onConnectClick();
    } else {
      flow->inputUrl().onCancelClick(), flow->inputCredentials().onCancelClick();
      flow->chooseLocation().onCancelClick();
    }
  }
};

TEST(WelcomeFlowTest, EachJourneyHasItsPagesAndItsEnd) {
  using Prepare = std::function<void(Journey&)>;
  using Update = ProductUpdateWindowController;
  const Prepare required = [](Journey& t) { t.assign(0); };
  const Prepare logInFirst = [](Journey& t) { t.assign(0), t.setCapabilities(kLogInFirst); };
  const Prepare choice = [](Journey& t) { t.assign(0, "", {"Home", "Lab"}); };
  const auto file = [](const Words& locations, std::optional<int> capabilities = {}, bool isManaged = false) {
    return [=](Journey& t) { t.serveFile(locations, capabilities, isManaged); };
  };
  const auto update = [](bool isRequired, auto click) {
    return [=](Journey& t) {
      t.assign(0);
      t.broker.changeFarm([=](auto& farm) { farm.connectorUpdate = {{"99.1", "new.deb", isRequired ? 1 : 0}}; });
      t.desktop.duringModalRun = [&t, click](auto) { (t.updateWindow.*click)(); };
    };
  };
  const auto error = [](const Prepare& prepare, const char* request, int code) {
    return [=](Journey& t) { prepare(t), t.addFault(orvane::demo::Fault::Kind::kErrorCode, request, code); };
  };
  const struct {
    const char* steps;
    Prepare prepare;
    const char* pages;
    const char* told;
    const char* stored;
  } rows[] = {
      {"first url ann", required, "APCP", "done;", "Theirs@Office ann"},
      {"add url ann off", [](Journey& t) { t.know(), t.assign(0); }, "APCPO", "done;", "Mine@ ann, Theirs@Office ann"},
      {"add link ann", required, "APCP", "done;", "Theirs@Office ann"},  // in the place of the address page
      {"link ann", [](Journey& t) { t.knowLinked(); }, "PCP", "Connection updated;done;", "Theirs@Office ann"},
      {"first back", required, "A", "cancelled;", "unsaved"},
      {"add url bob ann", logInFirst, "APCPC!P", "done;", "Theirs@Office ann"},
      {"first url bob back next ann", logInFirst, "APCPC!APCP", "done;", "Theirs@Office ann"},
      {"link back", logInFirst, "PCA", "", "unsaved"},
      {"link back back", logInFirst, "PCA", "cancelled;", "unsaved"},
      {"add url back", logInFirst, "APC", "cancelled;", "unsaved"},
      {"add url stop next ann", required, "APAPCP", "done;", "Theirs@Office ann"},
      {"add url ann stop next", logInFirst, "APCPCP", "done;", "Theirs@Office ann"},  // as entered
      {"add url bob stop ann", logInFirst, "APCPCP", "done;", "Theirs@Office ann"},
      {"link ann stop back next ann stop back", logInFirst, "PCPCAPCPCA", "", "unsaved"},
      {"add bad url ann", required, "APA!PCP", "done;", "Theirs@Office ann"},
      {"first url", error(required, "getconnectorinfo", 87), "APA!", "", "none"},
      {"first url ann", error(required, "getfarmproperties", 5), "APCP", "failed 5;", "F@ ann"},
      {"first url ann", update(false, &Update::onCancelClick), "APCP", "done;", "Theirs@Office ann"},
      {"first url", update(true, &Update::onCancelClick), "APA!", "", "none"},
      {"first url", update(true, &Update::onInstallClick), "APA", "", "none"},
      {"first url at:Lab ann", choice, "APLPCP", "done;", "Theirs@Lab ann"},
      {"first url back", choice, "APLP", "cancelled;", "F@ !"},
      {"first url ann", file({"Lab"}), "APCP", "done;", "Theirs@Lab ann"},
      {"first url at:Lab ann", file({"Home", "Lab"}), "APLPCP", "done;", "Theirs@Lab ann"},
      {"add url back add url at:Lab ann", file({"Home", "Lab"}), "APLAPLPCP", "cancelled;done;",
       "Theirs@Lab ann"},  // which is stored
      {"first url back", file({"Home", "Lab"}), "APL", "cancelled;", "F@ !"},
      {"first url", file({}), "APA!", "", "F@ !"},
      {"first url ann", error(file({"Lab"}), "authenticate", 5), "APCP", "failed 5;", "F@ !"},
      // Not assigned to this user: there is a file, of a farm that needs no assignment; that needs one; or no file.
      {"first url ann", file({"Lab"}, kLogInFirst), "APCP", "done;", "Theirs@Lab ann"},
      {"first url ann", file({"Lab"}, kLogInFirst, true), "APCPA!", "", "none"},
      {"first url ann", [](Journey& t) { t.setCapabilities(kLogInFirst); }, "APCPA!", "", "none"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.steps) + ": " + row.pages + " " + row.told);
    Journey journey;
    row.prepare(journey);
    journey.walk(row.steps);
    ASSERT_TRUE(journey.arrive());
    EXPECT_EQ(journey.pages, row.pages);
    EXPECT_EQ(journey.told, row.told);
    EXPECT_EQ(journey.stored(), row.stored);
    EXPECT_FALSE(journey.flow->progress().isAnimating());
  }
}

TEST(WelcomeFlowTest, AResetLeavesNothingBehindOnWhateverPage) {
  using Row = std::pair<const char*, std::string>;
  for (const auto& [steps, pages] : {Row("add", "A"), Row("add url", "AP"), Row("add url", "APL"),
                                     Row("add url at:Lab", "APLPC"), Row("add url at:Lab ann", "APLPCP"),
                                     Row("add url at:Lab ann stop", "APLPCPC"), Row("add url at:Lab ann", "APLPCPO")}) {
    SCOPED_TRACE(pages);
    Journey journey;
    journey.know(), journey.assign(0, "", {"Home", "Lab"});
    journey.walk(steps);
    ASSERT_TRUE(pages.back() == 'P' || journey.arrive());
    EXPECT_EQ(std::exchange(journey.pages, {}), pages);
    EXPECT_EQ(journey.flow->isInProgress(), pages != "A");
    const auto farm = journey.flow->configuredFarm();
    journey.flow->resetContent();
    EXPECT_EQ(journey.flow->currentStageView(), WelcomeStageView::kNone);
    EXPECT_FALSE(journey.flow->isInProgress() || journey.flow->progress().isAnimating());
    EXPECT_FALSE(journey.flow->configurationURL() || journey.flow->autodetectFarmGUID() ||
                 journey.flow->configuredFarm() || journey.flow->configuredLocation());
    journey.walk("url ann at:Lab on back stop");
    ASSERT_TRUE(farm == nullptr || journey.runUntilIdle(*farm));  // its worker waits for no answer
    EXPECT_EQ(journey.pages + journey.told, "");
  }
}

TEST(WelcomeFlowTest, AStoredFarmIsPutBackUnlessItWasSavedAndKeepsWhatIsConfirmed) {
  using Row = std::tuple<const char*, bool, const char*, bool>;
  for (const auto& [steps, isSaved, user, isOn] :
       {Row("back", false, "ann", false), Row("add", false, "ann", false), Row("back", true, "", false),
        Row("ann off", false, "ann", false), Row("ann on", false, "ann", true)}) {
    SCOPED_TRACE(steps);
    Journey journey;
    const auto other = std::make_shared<OvFarm>();
    other->setDoAutoLaunch(true);
    journey.manager->addFarm(other);
    journey.knowLinked();
    journey.walk("link");
    ASSERT_TRUE(journey.arrive());
    EXPECT_EQ(journey.farm->credentials().username(), "");
    if (isSaved) journey.manager->save();
    journey.walk(steps);
    EXPECT_EQ(journey.farm->credentials().username(), user);
    EXPECT_EQ(journey.farm->doAutoLaunch(), isOn);
    EXPECT_EQ(other->doAutoLaunch(), !isOn);
  }
}

TEST(WelcomeFlowTest, AnEmailAddressIsTheProposedUser) {
  for (const std::string text : {"ann@\x7f", "\x7f"}) {  // which nobody looks up
    Journey journey;
    journey.flow->setupWelcomeScreenWithURL(text, std::nullopt, Mode::kLink);
    journey.flow->brokerClientControllerDidConfigureFarm(journey.farm, FarmConfigurationResult::kFromBroker, false);
    EXPECT_EQ(journey.farm->credentials().username(), text == "\x7f" ? "" : text);
  }
}

TEST(WelcomeFlowTest, APromptTakesThePlaceOfWhateverWasAsked) {
  for (const std::string order : {"CL", "LC", "CC", "LL"}) {
    Journey journey;
    const auto prompt = [&](char page, const std::shared_ptr<int>& answers) {
      const auto answer = [answers](const auto&) { ++*answers; };
      if (page == 'L') return journey.flow->brokerClientControllerPromptLocationForFarm(journey.farm, answer);
      journey.flow->brokerClientControllerPromptCredentialsWithOldCredentials({}, answer, false, nullptr);
    };
    const auto first = std::make_shared<int>(), second = std::make_shared<int>();
    journey.walk("add");
    prompt(order[0], first);
    journey.flow->inputUrl().onCancelClick();  // on a page that is gone
    prompt(order[1], second);
    EXPECT_EQ(first.use_count(), 1);  // nobody can answer it any more
    journey.walk(order[1] == 'C' ? "ann" : "at:Office");
    EXPECT_EQ(std::pair(*first, *second), std::pair(0, 1));
    EXPECT_TRUE(journey.pages.ends_with('P') && journey.told.empty());
  }
}

}  // namespace

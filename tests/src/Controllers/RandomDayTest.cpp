// Random sequences of what users and brokers do, against the assembled controllers. A failure names its seed: run it
// again alone with ORVANE_RANDOM_DAY=seed.

#include <cstdlib>
#include <random>

#include "ProgramFixture.h"
#include "ScriptedOrchestration.h"

namespace {

using Window = FakeDesktop::Window;
using Flow = ScriptedOrchestration::Flow;
using Kind = ScriptedOrchestration::Kind;
using Prompt = ScriptedOrchestration::Prompt;
using Item = MainMenuController::Item;

class RandomDay : public ProgramFixture {
 public:
  explicit RandomDay(uint32_t seed)
      : ProgramFixture([this](const auto& environment) {
          return orchestration_ = std::make_shared<ScriptedOrchestration>(environment);
        }),
        random_(seed) {
    std::vector<std::shared_ptr<OvFarm>> farms(below(4));
    for (auto& farm : farms) farm = makeFarm();
    settings().setDiMode(chance(4));
    settings().setShowTutorialOnStart(chance(2));
    settings().save();
    store(farms);
    desktop->duringModalRun = [this](Window window) { answerModal(window); };
    start();
    mainQueue->pump();
  }
  ~RandomDay() {
    desktop->duringModalRun = nullptr;
    orchestration_.reset();
  }

  void step() {
    settleAnswers();
    moves_.clear();
    offerUserMoves();
    offerBrokerMoves();
    if (moves_.empty() || chance(6)) offer("half a second", [this] { timer->advance(std::chrono::milliseconds(500)); });
    if (chance(8)) offer("link", [this] { link(); });
    const auto& [name, act] = moves_[below(moves_.size())];
    history_ += name + "\n";
    const auto move = act;  // a nested modal run doesn't offer, but may end this
    move();
    mainQueue->pump();
    desktop->takeActs();
  }

  /// What doesn't hold now, in words; empty if all does.
  std::string broken() {
    std::string faults;
    const auto check = [&](bool holds, const char* what) {
      if (!holds) faults += std::string(what) + "\n";
    };
    const auto& diMode = window().diMode();
    const auto stage = welcome().currentStageView();

    bool isAnyRunning = false;
    bool mayAskCredentials = false;
    for (const auto& flow : orchestration_->flows) {
      check(!flow->prompt || flow->prompt->answers <= 1, "a prompt was answered twice");
      if (!flow->isRunning()) continue;
      isAnyRunning = true;
      if (!flow->isAsking()) continue;
      if (flow->promptKind == 'c') {
        mayAskCredentials = true;
        check(desktop->isShown(Window::kCredentials) || stage == WelcomeStageView::kCredentials,
              "credentials are asked for without a page");
      }
      if (flow->promptKind == 'l') {
        check(desktop->isShown(Window::kLocation) || stage == WelcomeStageView::kLocation,
              "a location is asked for without a page");
      }
      check(flow->promptKind != 'u' || desktop->isShown(Window::kUpdate), "an update is offered without a window");
    }
    check(!desktop->isShown(Window::kCredentials) || mayAskCredentials, "a page asks for credentials for nobody");

    const bool showsProgress =
        window().progress().isAnimating() || (diMode && diMode->isAnimating()) || stage == WelcomeStageView::kProgress;
    check(!showsProgress || isAnyRunning, "progress without a task");
    check(stage != WelcomeStageView::kProgress || welcome().progress().isAnimating(), "a progress page stands still");
    check(!desktop->isShown(Window::kProgress) || window().progress().isAnimating(), "a progress window stands still");
    check(welcomeIsShown() == (stage != WelcomeStageView::kNone), "the welcome flow and its place disagree");

    const bool isConnected = window().currentFarm() != nullptr;
    check(isConnected == (window().currentLocation() != nullptr), "a farm without a location");
    check(window().isLogoutItemEnabled() == window().isRefreshItemEnabled(), "log-out and refresh differ");
    check(!window().isLogoutItemEnabled() || isConnected, "log-out without a connection");
    for (const Item item : {Item::kLogout, Item::kRefresh}) {
      check(!window().mainMenu().validateMenuItem(item) || isConnected, "a menu item without a connection");
    }
    const bool isFree = !diMode && !desktop->attachedSheet() && !window().welcomePlacement() &&
                        !window().isTutorialShown() && !window().isSidePanelOpen();
    check(!isFree || window().cover() == MainWindowController::Cover::kNone, "a cover over nothing");
    check(!isFree || window().isConnectionsItemEnabled(), "no way to the connections");
    check(!isFree || window().mainMenu().validateMenuItem(Item::kToggleSidePanel), "no way to the side panel");
    check(!isFree || window().mainMenu().validateMenuItem(Item::kLogout) == isConnected, "the menu's log-out is wrong");
    check(!desktop->attachedSheet() || !diMode, "a sheet on a hidden window");
    const bool fillsWindow = window().welcomePlacement() == MainWindowController::WelcomePlacement::kWholeWindow;
    if (!diMode && (desktop->attachedSheet() || window().isTutorialShown() || fillsWindow)) {
      for (const Item item : {Item::kToggleSidePanel, Item::kDiMode, Item::kLogout, Item::kRefresh}) {
        check(!window().mainMenu().validateMenuItem(item), "a menu item beside a surface that has the window");
      }
    }
    check(window().isToolbarVisible() != fillsWindow, "the toolbar and the welcome flow disagree");

    if (window().connectionSettings().editedFarm() == nullptr) {
      const auto& farms = farmManager().farms();
      check(std::count_if(farms.begin(), farms.end(), [](const auto& farm) { return farm->doAutoLaunch(); }) <= 1,
            "several farms are auto-launched");
    }
    for (const auto& row : window().connectionsList().rows()) {
      check(row.isConnected() == (row.representedFarm() == window().currentFarm()), "the wrong row is marked");
    }
    check(window().connectionsList().rows().size() == farmManager().farms().size(), "a row is missing");
    if (diMode) checkStatusMenu(*diMode, check);
    return faults;
  }

  const std::string& history() const { return history_; }

 private:
  template <class Check>
  static void checkStatusMenu(const DiModeController& diMode, const Check& check) {
    const bool works = diMode.isAnimating();
    const bool hasFarm = diMode.currentFarm() != nullptr;
    const auto& menu = diMode.menu();
    check(menu[2].isEnabled == (!works && hasFarm) && menu[3].isEnabled == (!works && hasFarm),
          "the status menu's refresh or log-out is wrong");
    check(menu[0].isEnabled == (!works && !menu[0].submenu.empty()), "the status menu's connections are wrong");
    check(menu[1].isEnabled == !works, "the status menu's expanded view is wrong");
    check(menu[4].isEnabled == works, "the status menu's cancel is wrong");
    check(menu.size() == 7 || (menu.size() == 9 && hasFarm && menu[8].isEnabled), "the status menu's farm is wrong");
  }

  size_t below(size_t count) { return count == 0 ? 0 : random_() % count; }
  bool chance(size_t oneIn) { return below(oneIn) == 0; }
  void offer(std::string name, std::function<void()> move) { moves_.emplace_back(std::move(name), std::move(move)); }
  bool welcomeIsShown() { return window().welcomePlacement().has_value(); }

  std::shared_ptr<OvFarm> makeFarm() {
    auto farm = std::make_shared<OvFarm>();
    farm->setName("Farm " + std::to_string(++farmNumber_));
    farm->credentials().setNeedToSave(chance(2));
    for (size_t i = below(3); i > 0; --i) {
      auto location = OvLocation::location();
      location->setName("Location " + std::to_string(i));
      farm->addLocation(location);
    }
    return farm;
  }
  std::shared_ptr<AppFolderItem> makeTree() {
    auto root = AppFolderItem::appFolder();
    for (size_t i = below(3); i > 0; --i) {
      auto folder = AppFolderItem::appFolder();
      folder->setDisplayName("Folder " + std::to_string(i));
      auto application = std::make_shared<AppItem>();
      application->setName("application");
      application->setDisplayName("Application");
      folder->addItem(application);
      root->addItem(folder);
    }
    return root;
  }
  OvCredentials makeCredentials() {
    OvCredentials credentials;
    credentials.setUsername(chance(2) ? "ann" : "");
    return credentials;
  }

  void link() {
    const char* const links[] = {"orvane://autodetect/?autodetecturl=aHR0cDovL2Ix&farmguid=", "orvane://nonsense",
                                 "other://"};
    app->handleGetURLEvent(links[below(3)]);
  }

  // What happens while a modal window is up; it is answered in the end, so that the run returns.
  void answerModal(Window modal) {
    history_ += "  modal " + FakeDesktop::name(modal) + "\n";
    if (chance(3)) {
      link();
      history_ += "  link\n";
    }
    if (chance(3)) {
      moves_.clear();
      offerBrokerMoves();
      if (!moves_.empty()) {
        const auto [name, move] = moves_[below(moves_.size())];
        history_ += "  " + name + "\n";
        move();
      }
    }
    mainQueue->pump();
    if (modal == Window::kAlert) window().alert().onButtonClick(0);
    if (modal == Window::kUpdate) {
      chance(2) ? window().productUpdate().onInstallClick() : window().productUpdate().onCancelClick();
    }
  }

  void offerUserMoves() {
    if (window().diMode()) {
      offer("status menu", [this] { clickStatusMenu(); });
    }
    std::optional<Window> front = desktop->attachedSheet();
    if (const auto modal = desktop->modalWindow()) front = modal;
    if (front) return offerWindowMoves(*front);
    if (window().diMode()) return;
    if (window().isTutorialShown()) {
      offer("tutorial next", [this] { window().tutorial().onNextPageClicked(); });
      return;
    }
    if (window().welcomePlacement() == MainWindowController::WelcomePlacement::kWholeWindow) return offerWelcomeMoves();
    if (window().isSidePanelOpen()) return offerPanelMoves();
    offerMainMoves();
  }

  void clickStatusMenu() {
    const auto& menu = window().diMode()->menu();
    const auto& item = menu[below(menu.size())];
    const StatusMenuItem clicked = item.submenu.empty() ? item : item.submenu[below(item.submenu.size())];
    history_ += "  " + clicked.title + "\n";
    if (item.isEnabled) window().diMode()->onClick(clicked.submenu.empty() ? clicked : clicked.submenu[0]);
  }

  void offerWindowMoves(Window front) {
    switch (front) {
      case Window::kCredentials:
        return offerCredentialsMoves(window().inputCredentials());
      case Window::kLocation:
        return offerLocationMoves(window().chooseLocation());
      case Window::kProgress:
        return offer("cancel progress", [this] { window().progress().onCancelClick(); });
      case Window::kConfirmation:
        offer("toggle box", [this] { window().confirmWindow().setShowAgainChecked(chance(2)); });
        offer("confirm", [this] { window().confirmWindow().onOkClick(); });
        return offer("do not confirm", [this] { window().confirmWindow().onCancelClick(); });
      case Window::kEditLocation:
        offer("location done", [this] { window().connectionSettings().editLocation().onDoneButtonClick(); });
        return offer("location cancel", [this] { window().connectionSettings().editLocation().onCancelButtonClick(); });
      default:
        return;
    }
  }
  void offerCredentialsMoves(InputCredentialsViewController& page) {
    offer("enter credentials", [&page] {
      page.setUserName("ann");
      page.onConnectClick();
      page.onConnectClick();  // a double click
    });
    offer("cancel credentials", [&page] { page.onCancelClick(); });
  }
  void offerLocationMoves(ChooseLocationViewController& page) {
    offer("choose location", [this, &page] {
      page.selectLocation(below(2));
      page.onConnectClick();
    });
    offer("cancel location", [&page] { page.onCancelClick(); });
  }

  void offerWelcomeMoves() {
    auto& flow = welcome();
    switch (flow.currentStageView()) {
      case WelcomeStageView::kAddress:
        offer("enter address", [&flow] {
          flow.inputUrl().setUrlToConnect("ann@example.test");
          flow.inputUrl().onNextClick();
          flow.inputUrl().onNextClick();
        });
        return offer("skip address", [&flow] { flow.inputUrl().onCancelClick(); });
      case WelcomeStageView::kProgress:
        return offer("cancel welcome", [&flow] { flow.progress().onCancelClick(); });
      case WelcomeStageView::kCredentials:
        return offerCredentialsMoves(flow.inputCredentials());
      case WelcomeStageView::kLocation:
        return offerLocationMoves(flow.chooseLocation());
      case WelcomeStageView::kConfirmation:
        return offer("confirm auto-launch", [this, &flow] {
          flow.connectOnStartConfirmation().setAutolaunched(chance(2));
          flow.connectOnStartConfirmation().onDoneClick();
        });
      case WelcomeStageView::kNone:
        return;
    }
  }

  void offerPanelMoves() {
    offer("close panel", [this] { window().handleSidePanelMainDisablingAreaClick(); });
    if (window().isConnectionSettingsViewShown()) return offerEditorMoves();
    if (welcomeIsShown()) return offerWelcomeMoves();
    auto& list = window().connectionsList();
    offer("add", [this, &list] {
      desktop->heldKeys = chance(2) ? 0x60000 : 0x20000;
      list.onAddConnectionClick();
    });
    if (list.rows().empty()) return;
    offer("connect", [this, &list] { list.onConnectionClick(below(list.rows().size())); });
    offer("edit", [this, &list] { list.onEditConnectionClick(below(list.rows().size())); });
  }
  void offerEditorMoves() {
    auto& editor = window().connectionSettings();
    offer("toggle setting", [this, &editor] {
      const auto setting = ConnectionSetting(below(kConnectionSettings));
      if (editor.isShown(setting) && editor.isEnabled(setting)) editor.setChecked(setting, chance(2));
    });
    offer("undo", [&editor] { editor.onUndoButtonClick(); });
    offer("clear credentials", [&editor] { editor.clearCredentialsClick(); });
    offer("delete", [&editor] { editor.onDeleteConnectionClick(); });
    offer("add location", [&editor] { editor.onEditLocationListClick(0); });
    offer("leave editor", [&editor] {
      if (!editor.isManualFarmMode()) return editor.onBackButtonClick();
      editor.isAddEnabled() ? editor.onAddManualConnectionClick() : editor.onCancelManualConnectionClick();
    });
  }

  void offerMainMoves() {
    offer("connections", [this] { window().onConnectionsButtonClick(); });
    if (window().isLogoutItemEnabled()) offer("log out", [this] { window().onLogoutButtonClick(); });
    if (window().isRefreshItemEnabled()) offer("refresh", [this] { window().onRefreshButtonClick(); });
    offer("integrate", [this] { window().mainMenu().onDiModeClick(); });
    offer("menu log out", [this] { window().mainMenu().onLogoutClick(); });
    offer("key", [this] {
      const int keys[] = {36, 36, 51, 123, 124, 125, 126, 7};
      window().applicationTable().grid().keyDown(keys[below(8)]);
    });
    offer("search", [this] {
      window().applicationTable().onShowSearchButtonClick();
      if (window().applicationTable().isSearchFieldShown()) window().applicationTable().controlTextDidChange("app*");
    });
  }

  // A flow goes on by what it was answered; a question that was let go chose nothing.
  void settleAnswers() {
    for (const auto& flow : orchestration_->flows) {
      if (!flow->prompt || flow->isAsking()) continue;
      const auto prompt = std::exchange(flow->prompt, nullptr);
      const int nothing = flow->promptKind == 'c' ? Prompt::kEndsSilently : flow->promptKind == 'l' ? 8 : 3;
      const int outcome = prompt->answers == 0 ? nothing : prompt->outcome;
      if (!flow->isRunning() || outcome == Prompt::kGoesOn) continue;
      flow->isOver = true;
      const auto delegate = flow->delegate.lock();
      if (!delegate || outcome == Prompt::kEndsSilently) continue;
      delegate->brokerClientControllerDidFailConnect({outcome, "Failed"}, flow->farm);
      mainQueue->pump();
    }
  }

  void offerBrokerMoves() {
    for (const auto& flow : orchestration_->flows) {
      if (!flow->isRunning() || flow->isAsking()) continue;
      if (flow->kind == Kind::kLaunch) {
        offer("launched", [flow] { finish(*flow, [](Flow& launch) { launch.completion(nullptr); }); });
        offer("launch failed", [flow] {
          finish(*flow, [](Flow& launch) {
            const OvError error{5, "Launch failed"};
            launch.completion(&error);
          });
        });
        continue;
      }
      const auto delegate = flow->delegate.lock();
      if (!delegate) continue;
      if (flow->kind == Kind::kConfigure) {
        offer("configured", [this, flow, delegate] {
          auto farms = farmManager().farms();
          const bool isKnown = !farms.empty() && chance(3);
          const auto farm = isKnown ? farms[below(farms.size())] : makeFarm();
          flow->isOver = true;
          delegate->brokerClientControllerDidConfigureFarm(farm, 1 + int(below(2)), isKnown);
        });
        offer("not configured", [flow, delegate] {
          flow->isOver = true;
          delegate->brokerClientControllerDidFailFarmConfiguration({5, "None"});
        });
        continue;
      }
      offer("describe", [delegate] { delegate->brokerClientControllerDidUpdateConnectionDescription("Working"); });
      offer("fail", [this, flow, delegate] {
        const int codes[] = {0, 2, 3, 7, 8, 14};
        flow->isOver = true;
        delegate->brokerClientControllerDidFailConnect({codes[below(6)], "Failed"}, flow->farm);
      });
      offer("ask for credentials", [this, flow, delegate] {
        const OvError error{1326, "Wrong"};
        delegate->brokerClientControllerPromptCredentialsWithOldCredentials(
            makeCredentials(),
            [answer = ask(*flow, 'c')](const auto& given) { answer(given ? Prompt::kGoesOn : Prompt::kEndsSilently); },
            chance(2), chance(2) ? &error : nullptr);
      });
      if (flow->kind == Kind::kConnect && !flow->isConnected) {
        offer("ask for location", [this, flow, delegate] {
          if (flow->farm->locations().empty()) return;
          delegate->brokerClientControllerPromptLocationForFarm(
              flow->farm, [answer = ask(*flow, 'l')](const auto& chosen) { answer(chosen ? Prompt::kGoesOn : 8); });
        });
        offer("offer update", [this, flow, delegate] {
          delegate->brokerClientControllerShowUpdateWindowWithUpdateURL(
              "https://u", chance(2), "9.0",
              [answer = ask(*flow, 'u')](int choice) { answer(choice == 2 ? Prompt::kGoesOn : choice + 2); });
        });
        offer("connected", [this, flow, delegate] {
          flow->isConnected = true;
          farmManager().addFarm(flow->farm);
          delegate->brokerClientControllerDidConnectToFarm(flow->farm, flow->location);
        });
      } else {
        offer("applications", [this, flow, delegate] {
          flow->isOver = true;
          delegate->brokerClientControllerDidReceiveApplicationList(makeTree());
        });
      }
    }
  }
  template <class Event>
  static void finish(Flow& flow, const Event& event) {
    flow.isOver = true;
    event(flow);
  }
  // What a block calls with the outcome of its answer.
  static std::function<void(int)> ask(Flow& flow, char kind) {
    const auto answerer = std::make_shared<char>();
    flow.prompt = std::make_shared<Prompt>();
    flow.answerer = answerer;
    flow.promptKind = kind;
    return [prompt = flow.prompt, answerer](int outcome) {
      ++prompt->answers;
      prompt->outcome = outcome;
    };
  }

  std::mt19937 random_;
  std::shared_ptr<ScriptedOrchestration> orchestration_;
  std::vector<std::pair<std::string, std::function<void()>>> moves_;
  std::string history_;
  int farmNumber_ = 0;
};

TEST(RandomDayTest, WhateverHappensTheSurfacesAgree) {
  constexpr int kDays = 40;
  constexpr int kSteps = 120;
  const char* const only = std::getenv("ORVANE_RANDOM_DAY");
  const uint32_t first = only == nullptr ? 0 : uint32_t(std::strtoul(only, nullptr, 10));
  for (uint32_t seed = first; seed < first + (only == nullptr ? kDays : 1); ++seed) {
    RandomDay day(seed);
    std::string broken = day.broken();
    for (int step = 0; step < kSteps && broken.empty(); ++step) {
      day.step();
      broken = day.broken();
    }
    ASSERT_EQ(broken, "") << "seed " << seed << "\n" << day.history();
  }
}

}  // namespace

#include <gtest/gtest.h>

#include "Controllers/DiModeController.h"
#include "OrvaneCommon/LocalizedText.h"
#include "Support/AppTree.h"
#include "Support/FakeDesktop.h"
#include "Support/FakeTimer.h"

namespace {

using namespace std::chrono_literals;
using orvane::localizedText;

std::shared_ptr<OvFarm> farm(const std::string& name) {
  auto result = std::make_shared<OvFarm>();
  result->setName(name);
  return result;
}

class DiModeTest : public testing::Test, public DiModeDelegate {
 protected:
  void diModeWantsConnectToFarm(const std::shared_ptr<OvFarm>& to) override { tell("connect "), told += to->name(); }
  void diModeWantsCancelConnect() override { tell("cancel"); }
  void diModeWantsLaunchApp(const std::shared_ptr<AppItem>& item) override { tell("launch " + item->displayName()); }
  void diModeWantsRefreshApplicationList() override { tell("refresh"); }
  void diModeWantsLogoutWithOnDoneBlock(LogoutBlock done) override { tell("logout"), onLogoutDone = std::move(done); }
  void diModeWantsShowSettings() override { tell("settings"); }
  void diModeWantsShowAbout() override { tell("about"); }
  void diModeWantsGoToExpandedMode() override { tell("expanded"); }
  void tell(const std::string& what) {
    if (onAct) onAct();
    told += what;
  }

  // The fixed entries that are enabled, in their order, then the titles of what follows, disabled ones with a minus.
  std::string menu() const {
    static const char* const kKeys[] = {"Connections",   "ExpandedView", "Refresh", "Logout",
                                        "CancelConnect", "Settings",     "About"};
    std::string line;
    for (size_t i = 0; i < std::size(kKeys); ++i) {
      const StatusMenuItem& item = diMode->menu().at(i);
      EXPECT_EQ(item.title, localizedText(std::string("DiMode.Menu.") + kKeys[i]));
      if (item.isEnabled) line += kKeys[i] + std::string(" ");
    }
    return line + titles({diMode->menu().begin() + std::size(kKeys), diMode->menu().end()});
  }
  static std::string titles(const std::vector<StatusMenuItem>& items) {
    std::string line;
    for (const StatusMenuItem& item : items) {
      line += (line.empty() ? "" : " ") + (item.isSeparator ? "|" : item.title) + (item.isEnabled ? "" : "-");
      if (!item.submenu.empty()) line += "(" + titles(item.submenu) + ")";
    }
    return line;
  }
  // What the delegate is told at a click on the item at this path, as the menu read when it was opened.
  std::string toldAtClick(const std::vector<StatusMenuItem>& opened, const std::vector<size_t>& path) {
    const auto* items = &opened;
    for (size_t i = 0; i + 1 < path.size(); ++i) items = &items->at(path[i]).submenu;
    told.clear();
    diMode->onClick(items->at(path.back()));
    return told;
  }
  // What the desktop saw since the last call and while so much time passed.
  std::string actsWithin(std::chrono::milliseconds time) {
    for (; time > 0ms; time -= 100ms) timer->advance(100ms), mainQueue->pump();
    std::string line;
    for (const std::string& act : desktop.takeActs()) line += act + " ";
    return line;
  }

  const std::shared_ptr<PumpedQueue> mainQueue = std::make_shared<PumpedQueue>();
  const std::shared_ptr<FakeTimer> timer = std::make_shared<FakeTimer>();
  FakeDesktop desktop{mainQueue};
  std::shared_ptr<DiModeController> diMode = std::make_shared<DiModeController>(*this, desktop, timer, mainQueue);
  const std::shared_ptr<AppFolderItem> tree =
      folder("", {AppFolderItem::appBackFolder(), app("Clock"), folder("Office", {app("Writer"), app("Calc")}),
                  folder("Games", {AppFolderItem::appBackFolder(), app("Chess"), folder("Cards", {app("Patience")})}),
                  folder("Empty")});
  std::string told;
  std::function<void()> onAct;
  LogoutBlock onLogoutDone;
};

TEST_F(DiModeTest, OffersInEachStateWhatMakesSense) {
  const std::string idle = "Connections ExpandedView Settings About ", noFarms = "ExpandedView Settings About ";
  const std::string connected = "Connections ExpandedView Refresh Logout Settings About ";
  const std::string busy = "CancelConnect Settings About ";
  const std::string home = "| Home(Clock Office(Writer Calc) Games(Chess Cards-) Empty)";
  const OvFarmList farms = {farm("Home"), farm("Work")};
  const auto setup = [&](const auto& current) { diMode->setupDiModeWithFarms(farms, current, tree); };
  const auto start = [&] { diMode->startProgressAnimationWithCancelBlock({}); };
  const auto stop = [&] { diMode->stopProgressAnimation(); };
  const auto logout = [&] { diMode->logoutFromCurrentFarm(); };
  const std::pair<std::function<void()>, std::string> steps[] = {
      {[] {}, noFarms},
      {start, busy},
      {stop, noFarms},
      {[&] { setup(nullptr); }, idle},
      {start, busy},
      {[&] { setup(farms[0]); }, busy + home},
      {stop, connected + home},
      {[&] { setup(farms[0]); }, connected + home},  // refreshed in place
      {start, busy + home},
      {[&] { diMode->stopProgressAnimationAndPerformCancelBlock(); }, connected + home},
      {[&] { setup(farms[1]); }, connected + home},  // the title stays
      {logout, idle},
      {logout, idle},
      {[&] { diMode->setupDiModeWithFarms(farms, farms[1], folder("")); }, connected + "| Work"},
      {[&] { diMode->setupDiModeWithFarms(farms, farms[1], nullptr); }, connected},
      {start, busy},
      {logout, busy},
      {stop, idle},
      {[&] { diMode->setupDiModeWithFarms({}, nullptr, tree); }, noFarms},
  };
  for (size_t i = 0; i < std::size(steps); ++i) {
    steps[i].first();
    EXPECT_EQ(menu(), steps[i].second) << "step " << i;
  }
}

TEST_F(DiModeTest, TellsWhatWasClicked) {
  diMode->setupDiModeWithFarms({farm("Home"), farm("Work")}, farm("Home"), tree);
  const auto whileConnected = diMode->menu();
  const struct {
    std::vector<size_t> path;
    const char* connected;
    const char* working;
    const char* loggedOut;
  } cases[] = {
      {{0}, "", "", ""},
      {{0, 1}, "connect Work", "", "connect Work"},
      {{1}, "expanded", "", "expanded"},
      {{2}, "refresh", "", ""},
      {{3}, "logout", "", ""},
      {{4}, "", "cancel", ""},
      {{5}, "settings", "settings", "settings"},
      {{6}, "about", "about", "about"},
      {{7}, "", "", ""},
      {{8, 0}, "launch Clock", "launch Clock", ""},
      {{8, 1, 1}, "launch Calc", "launch Calc", ""},
      {{8, 2, 1}, "", "", ""},  // a folder below a folder
  };
  for (const auto& row : cases) EXPECT_EQ(toldAtClick(whileConnected, row.path), row.connected);
  diMode->startProgressAnimationWithCancelBlock({});
  for (const auto& row : cases) EXPECT_EQ(toldAtClick(whileConnected, row.path), row.working);
  diMode->stopProgressAnimation();
  onLogoutDone(false, true);
  EXPECT_NE(diMode->currentFarm(), nullptr);
  onLogoutDone(true, false);
  for (const auto& row : cases) EXPECT_EQ(toldAtClick(whileConnected, row.path), row.loggedOut);

  // The menu may be rebuilt, and gone, while a click is told.
  diMode->setupDiModeWithFarms({farm("Removed")}, nullptr, nullptr);
  onAct = [this] { diMode->setupDiModeWithFarms({}, nullptr, nullptr); };
  EXPECT_EQ(toldAtClick(diMode->menu(), {0, 0}), "connect Removed");
  onAct = [this] { diMode.reset(); };
  EXPECT_EQ(toldAtClick(diMode->menu(), {1}), "expanded");
  onLogoutDone(true, true);
}

TEST_F(DiModeTest, ShowsByItsPictureThatATaskRuns) {
  const std::string wait = "picture DI_Mode-Icon_Wait ";
  EXPECT_EQ(actsWithin(0ms), "add item tool tip " + localizedText("ProductName.Orvane") + " " + wait +
                                 "alternate picture DI_Mode-Icon_Active-White ");
  std::string frames;
  for (const char* frame : {"1", "2", "3", "4", "5", "6", "7", "8", "1"}) {
    frames += std::string("picture DI_Mode-Icon_State") + frame + " ";
  }
  int cancelled = 0;
  for (int task = 0; task < 2; ++task) {  // each begins with the first frame
    diMode->startProgressAnimationWithCancelBlock([&] { ++cancelled; });
    EXPECT_EQ(actsWithin(4500ms), frames);
  }
  for (int times = 0; times < 2; ++times) {
    diMode->stopProgressAnimationAndPerformCancelBlock();
    EXPECT_EQ(cancelled, 1);
    EXPECT_EQ(actsWithin(2000ms), wait);
  }
  diMode->startProgressAnimationWithCancelBlock([&] { ++cancelled; });
  diMode->stopProgressAnimation();
  diMode->stopProgressAnimationAndPerformCancelBlock();
  EXPECT_EQ(cancelled, 1) << "of a task that is over";
  diMode->startProgressAnimationWithCancelBlock({});
  diMode.reset();
  EXPECT_EQ(actsWithin(2000ms), wait + wait + "remove item ");
}

}  // namespace

// What the user waits for in a catalogue of 5,000 applications in 50 folders: each keystroke in the search field, each
// step into a folder and back, and the status menu after a refresh. Nobody draws here; "redraws" is how often a view
// would have to.

#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "Controllers/ApplicationTableViewController.h"
#include "Controllers/DiModeController.h"
#include "Platform/ThreadTimer.h"

namespace {

constexpr size_t kFolders = 50, kItems = 5'000, kFarms = 20;
// A word that many names have, one that none has, wildcards, and letters that only fold beyond ASCII.
constexpr const char* kPatterns[] = {"calculator", "not there", "o*ce ?0", "\u00dcBERSICHT"};

template <class Item>
std::shared_ptr<Item> named(std::shared_ptr<Item> item, const std::string& displayName) {
  item->setDisplayName(displayName);
  return item;
}

std::shared_ptr<AppFolderItem> tree() {
  constexpr const char* kWords[] = {"Office", "Calculator", "Writer", "Notes", "\u00dcbersicht", "Archive", "Mail"};
  constexpr size_t kCount = std::size(kWords);
  const auto root = AppFolderItem::appFolder();
  for (size_t folder = 0; folder < kFolders; ++folder) {
    root->addItem(named(AppFolderItem::appFolder(), "Department " + std::to_string(folder)));
  }
  for (size_t i = 0; i < kItems; ++i) {
    const std::string name = std::string(kWords[i % kCount]) + " " + kWords[i / kCount % kCount];
    static_cast<AppFolderItem&>(*root->appItems()[i % kFolders])
        .addItem(named(std::make_shared<AppItem>(), name + " " + std::to_string(i)));
  }
  root->sortContentAlphabetically();
  return root;
}

struct NobodyStarts : ApplicationTableDelegate {
  void applicationHasBeenChoosen(const std::shared_ptr<AppItem>&) override {}
};

// The table as a window has it open, in front of the root.
struct Table {
  Table() {
    controller.showApplications(tree());
    controller.setOnChange([this] { ++redraws; });
  }

  NobodyStarts delegate;
  ApplicationTableViewController controller{delegate};
  size_t redraws = 0;
};

void countPer(benchmark::State& state, const char* what, size_t eachTime) {
  using benchmark::Counter;
  state.counters[what] = Counter(static_cast<double>(eachTime), Counter::kIsIterationInvariantRate | Counter::kInvert);
}

// The pattern typed letter by letter into an empty field, and the field emptied again.
void typeAhead(benchmark::State& state) {
  Table table;
  const std::string pattern = kPatterns[state.range(0)];
  std::vector<std::string> texts;
  for (size_t end = 1; end <= pattern.size(); ++end) {
    const bool isInsideCharacter = end < pattern.size() && (static_cast<unsigned char>(pattern[end]) & 0xC0) == 0x80;
    if (!isInsideCharacter) texts.push_back(pattern.substr(0, end));
  }
  texts.emplace_back();
  for (auto _ : state) {
    for (const std::string& text : texts) table.controller.controlTextDidChange(text);
  }
  const size_t keystrokes = texts.size();
  state.SetLabel(pattern);
  countPer(state, "keystroke", keystrokes);
  state.counters["redraws"] =
      static_cast<double>(table.redraws) / static_cast<double>(keystrokes * size_t(state.iterations()));
}

// Into the folder in the middle, and back by its first item.
void switchFolders(benchmark::State& state) {
  Table table;
  for (auto _ : state) {
    table.controller.handleAppTableItemViewClick(kFolders / 2, 2);
    table.controller.handleAppTableItemViewClick(0, 2);
  }
  countPer(state, "switch", 2);
  state.counters["redraws"] = static_cast<double>(table.redraws) / static_cast<double>(2 * state.iterations());
}

// A list that comes from the broker: ways back for its folders, and its first page.
void showList(benchmark::State& state) {
  Table table;
  for (auto _ : state) {
    state.PauseTiming();
    auto root = tree();
    state.ResumeTiming();
    table.controller.showApplications(root);
  }
}

struct NobodyAnswers : DiModeDelegate {
  void diModeWantsConnectToFarm(const std::shared_ptr<OvFarm>&) override {}
  void diModeWantsCancelConnect() override {}
  void diModeWantsLaunchApp(const std::shared_ptr<AppItem>&) override {}
  void diModeWantsRefreshApplicationList() override {}
  void diModeWantsLogoutWithOnDoneBlock(LogoutBlock) override {}
  void diModeWantsShowSettings() override {}
  void diModeWantsShowAbout() override {}
  void diModeWantsGoToExpandedMode() override {}
};

struct NoStatusArea : orvane::StatusArea {
  struct Item : orvane::StatusItem {
    void setToolTip(const std::string&) override {}
    void setPicture(const std::string&) override {}
    void setAlternatePicture(const std::string&) override {}
  };
  std::unique_ptr<orvane::StatusItem> addItem() override { return std::make_unique<Item>(); }
};

void rebuildStatusMenu(benchmark::State& state) {
  OvFarmList farms;
  for (size_t i = 0; i < kFarms; ++i) {
    farms.push_back(std::make_shared<OvFarm>());
    farms.back()->setName("Farm " + std::to_string(i));
  }
  const auto root = tree();
  NobodyAnswers delegate;
  NoStatusArea area;
  const auto controller = std::make_shared<DiModeController>(delegate, area, orvane::makeTimer(), nullptr);
  for (auto _ : state) controller->setupDiModeWithFarms(farms, farms.front(), root);
}

}  // namespace

BENCHMARK(typeAhead)->DenseRange(0, std::size(kPatterns) - 1)->Unit(benchmark::kMicrosecond);
BENCHMARK(switchFolders)->Unit(benchmark::kMicrosecond);
BENCHMARK(showList)->Unit(benchmark::kMicrosecond);
BENCHMARK(rebuildStatusMenu)->Unit(benchmark::kMicrosecond);

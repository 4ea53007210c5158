// The search field's type-ahead and the sorting of a large farm, beside what the C library offers for both.

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <fnmatch.h>
#include <wchar.h>

#include "Model/AppFolderItem.h"

namespace {

constexpr size_t kFolders = 200, kItems = 20'000;
constexpr const char* kPatterns[] = {"calc", "o*ce ?0", "not there", "\u00dcBER"};

std::string nameOf(size_t number) {
  constexpr const char* kWords[] = {"Office", "Calculator", "Writer", "Notes", "\u00dcbersicht", "Archive", "Mail"};
  constexpr size_t kCount = std::size(kWords);
  return std::string(kWords[number % kCount]) + " " + kWords[number / kCount % kCount] + " " + std::to_string(number);
}

// All names in an order that is no order, the same in every run.
const std::vector<std::string>& names() {
  static const std::vector<std::string> kNames = [] {
    if (std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr) throw std::runtime_error("no such locale");
    std::vector<std::string> result;
    for (size_t number = 0; number < kItems; ++number) result.push_back(nameOf(number));
    std::ranges::shuffle(result, std::mt19937(1));
    return result;
  }();
  return kNames;
}

std::shared_ptr<AppFolderItem> tree(size_t folders) {
  const auto root = AppFolderItem::appFolder();
  for (size_t folder = 0; folder < folders; ++folder) root->addItem(AppFolderItem::appFolder());
  for (size_t number = 0; number < kItems; ++number) {
    const auto item = std::make_shared<AppItem>();
    item->setDisplayName(names()[number]);
    std::static_pointer_cast<AppFolderItem>(root->appItems()[number % folders])->addItem(item);
  }
  return root;
}

void search(benchmark::State& state) {
  const auto root = tree(kFolders);
  const char* pattern = kPatterns[state.range(0)];
  size_t found = 0;
  for (auto _ : state) found = root->applicationItemsUsingFilterPattern(pattern).size();
  state.SetLabel(pattern);
  state.counters["found"] = static_cast<double>(found);
}

void searchByFnmatch(benchmark::State& state) {
  const auto root = tree(kFolders);
  const std::string pattern = std::string("*") + kPatterns[state.range(0)] + "*";
  size_t found = 0;
  for (auto _ : state) {
    AppFolderItem::Items matching;
    for (const auto& item : root->allApplicationItems()) {
      if (fnmatch(pattern.c_str(), item->displayName().c_str(), FNM_CASEFOLD) == 0) matching.push_back(item);
    }
    found = matching.size();
    benchmark::DoNotOptimize(matching);
  }
  state.SetLabel(kPatterns[state.range(0)]);
  state.counters["found"] = static_cast<double>(found);
}

void sort(benchmark::State& state) {
  const auto folders = static_cast<size_t>(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    auto root = tree(folders);
    state.ResumeTiming();
    root->sortContentAlphabetically();
    state.PauseTiming();
    root.reset();
    state.ResumeTiming();
  }
}

// The names are wide beforehand, which a program that keeps UTF-8 would have to do first.
void sortByWcscasecmp(benchmark::State& state) {
  const auto folders = static_cast<size_t>(state.range(0));
  std::vector<std::vector<std::wstring>> unsorted(folders);
  for (size_t number = 0; number < kItems; ++number) {
    std::wstring wide(names()[number].size(), L'\0');
    wide.resize(mbstowcs(wide.data(), names()[number].c_str(), wide.size()));
    unsorted[number % folders].push_back(wide);
  }
  for (auto _ : state) {
    state.PauseTiming();
    auto sorted = unsorted;
    state.ResumeTiming();
    for (auto& folder : sorted) {
      std::ranges::stable_sort(folder, [](const std::wstring& first, const std::wstring& second) {
        return wcscasecmp(first.c_str(), second.c_str()) < 0;
      });
    }
    state.PauseTiming();
    sorted.clear();
    state.ResumeTiming();
  }
}

// What a name costs when the tree is built, its folding included.
void fill(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(tree(kFolders));
}

}  // namespace

BENCHMARK(search)->DenseRange(0, std::size(kPatterns) - 1)->Unit(benchmark::kMicrosecond);
BENCHMARK(searchByFnmatch)->DenseRange(0, std::size(kPatterns) - 1)->Unit(benchmark::kMicrosecond);
BENCHMARK(sort)->Arg(kFolders)->Arg(1)->Unit(benchmark::kMicrosecond);
BENCHMARK(sortByWcscasecmp)->Arg(kFolders)->Arg(1)->Unit(benchmark::kMicrosecond);
BENCHMARK(fill)->Unit(benchmark::kMicrosecond);

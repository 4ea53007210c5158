#include <sstream>

#include <gtest/gtest.h>

#include "Controllers/ApplicationTableViewController.h"
#include "OrvaneCommon/LocalizedText.h"
#include "Support/AppTree.h"

namespace {

using orvane::localizedText;

std::shared_ptr<AppFolderItem> largeTree() {
  const auto old = folder("Old", {app("Calc97"), folder("Older", {app("Abacus")})});
  return folder("", {folder("Empty"), folder("Office", {app("AAcalc"), app("Writer"), old}), app("Calculator")});
}

class ApplicationTableTest : public testing::Test, public ApplicationTableDelegate {
 protected:
  ApplicationTableTest() {
    table.setOnChange([this] {
      ++redraws;
      const bool searches = !table.searchText().empty(), hasItems = !table.appItems().empty();
      EXPECT_EQ(table.headerText(), localizedText(searches ? "ApplicationSearch.SearchResults.Header"
                                                           : "ApplicationTable.ApplicationsLabel"));
      EXPECT_EQ(table.isEmptyResultLabelHidden(), hasItems || !searches);
      EXPECT_EQ(table.selectionIndex().has_value(), hasItems);
    });
    table.setOnFocus([this](ApplicationTableFocus control) {
      told += control == ApplicationTableFocus::kGrid ? " >grid" : " >field";
    });
  }
  void applicationHasBeenChoosen(const std::shared_ptr<AppItem>& item) override { told += " !" + item->displayName(); }

  // What the user does, what then is shown with the selection in brackets, and what that led to.
  void expect(const std::vector<std::pair<const char*, const char*>>& steps) {
    for (const auto& [act, expected] : steps) EXPECT_EQ(stateAfter(act), expected) << act;
  }
  std::string stateAfter(const std::string& act) {
    told.clear();
    redraws = 0;
    std::istringstream words(act);
    std::string verb, text;
    words >> verb >> text;
    if (verb == "click") table.handleAppTableItemViewClick(std::stoul(text), 1);
    if (verb == "open") table.handleAppTableItemViewClick(std::stoul(text), 2);
    if (verb == "key" && !table.grid().keyDown(std::stoi(text))) told = " not taken";
    if (verb == "search") table.onShowSearchButtonClick();
    if (verb == "type") table.controlTextDidChange(text);
    if (verb == "cancel") table.onCancelSearchClick();
    if (verb == "respond") table.makeFirstResponder();
    EXPECT_LE(redraws, verb == "open" || verb == "click" ? 2 : 1) << act;  // thousands of items are drawn once
    return state();
  }
  std::string state() const {
    std::string line;
    for (const auto& item : table.appItems()) {
      const bool isBack = item->displayName() == localizedText("ApplicationTable.DefaultFolderNames.Back");
      const std::string name = isBack ? "<" : item->displayName();
      line += (line.empty() ? "" : " ") + (item == table.selectedItem() ? "[" + name + "]" : name);
    }
    if (table.isSearchFieldShown()) line += " ?" + table.searchText();
    if (!table.isEmptyResultLabelHidden()) line += " none";
    return line + (table.isShowSearchButtonEnabled() || table.isSearchFieldShown() ? "" : " no search") + told;
  }

  ApplicationTableViewController table{*this};
  std::string told;
  int redraws = 0;
};

TEST_F(ApplicationTableTest, ShowsWhatATreeHasForTheUser) {
  const std::pair<std::shared_ptr<AppFolderItem>, const char*> cases[] = {
      {folder("", {folder("Office", {app("Calc"), app("Writer")})}), "[Calc] Writer >grid"},
      {folder("", {folder("Office", {app("Calc")}), folder("Empty")}), "[Office] Empty >grid"},
      {folder("", {app("Calc")}), "[Calc] >grid"},
      {folder("", {folder("Empty")}), " no search >grid"},
      {folder(""), " no search >grid"},
      {nullptr, " no search >grid"},
  };
  EXPECT_EQ(stateAfter("search"), " no search");
  for (const auto& [root, expected] : cases) {
    table.showApplications(largeTree());
    expect({{"search", "[Empty] Office Calculator ? >field"}, {"type zz", " ?zz none"}});
    EXPECT_NE(table.emptyResultText().find("zz"), std::string::npos);
    told.clear();
    redraws = 0;
    table.showApplications(root);
    EXPECT_EQ(state(), expected);
    EXPECT_EQ(redraws, 1);
    EXPECT_EQ(table.applicationsRootFolder(), root);
  }
  expect({{"search", " no search"}, {"key 36", " no search"}, {"key 51", " no search"}, {"key 124", " no search"}});
}

TEST_F(ApplicationTableTest, WalksDownFoldersAndBackUp) {
  const auto tree = largeTree();
  for (int times = 0; times < 2; ++times) {  // a tree that is shown again, after a refresh, gets no second way back
    table.showApplications(tree);
    expect({{"key 51", "[Empty] Office Calculator"},
            {"open 0", "[<] >grid"},
            {"open 0", "[Empty] Office Calculator >grid"},
            {"click 1", "Empty [Office] Calculator >grid"},
            {"key 36", "[<] AAcalc Writer Old"},
            {"open 3", "[<] Calc97 Older >grid"},
            {"open 2", "[<] Abacus >grid"},
            {"key 51", "[<] Calc97 Older"},
            {"open 0", "[<] AAcalc Writer Old >grid"},
            {"click 1", "< [AAcalc] Writer Old >grid"},
            {"key 36", "< [AAcalc] Writer Old !AAcalc"},
            {"open 4", "< [AAcalc] Writer Old"},  // a click on what has gone meanwhile
            {"key 51", "[Empty] Office Calculator"}});
  }
  table.showApplications(folder("", {folder("Only", {folder("Sub", {app("Writer")}), app("Calc")})}));
  expect({{"key 51", "[Sub] Calc"}, {"open 0", "[Writer] >grid"}, {"key 51", "[Sub] Calc"}});

  auto deep = folder("Deep", {app("Calc")});
  for (int i = 0; i < 60'000; ++i) deep = folder("Deep", {deep});
  table.showApplications(folder("", {deep, app("Writer")}));
  expect({{"open 0", "[<] Deep >grid"}});
}

TEST_F(ApplicationTableTest, SearchesTheOpenFolderAndAllBelow) {
  table.showApplications(largeTree());
  expect({{"search", "[Empty] Office Calculator ? >field"},
          {"type CALC", "[Calculator] AAcalc Calc97 ?CALC"},
          {"type a*u", "[Calculator] Abacus ?a*u"},
          {"type back", " ?back none"},
          {"respond", " ?back none >field"},
          {"type", "[Empty] Office Calculator ?"},
          {"click 1", "Empty [Office] Calculator >grid"},  // the empty field goes
          {"respond", "Empty [Office] Calculator >grid"},
          {"key 36", "[<] AAcalc Writer Old"},
          {"search", "[<] AAcalc Writer Old ? >field"},
          {"type *", "[AAcalc] Writer Old Calc97 Older Abacus ?*"},
          {"open 3", "AAcalc Writer Old [Calc97] Older Abacus ?* >grid !Calc97"},
          {"type calculator", " ?calculator none"},
          {"cancel", "[<] AAcalc Writer Old"},
          {"search", "[<] AAcalc Writer Old ? >field"},
          {"type old", "[Old] Older ?old"},
          {"open 1", "[<] Abacus >grid"},  // what was found is a folder
          {"key 51", "[<] Calc97 Older"}});
}

TEST_F(ApplicationTableTest, MovesTheSelectionWithinTheItems) {
  table.showApplications(folder("", {folder("", AppFolderItem::Items(8, app("")))}));
  table.grid().setWidths(399, 100);
  const std::pair<int, size_t> walk[] = {// three columns: left, right, down, up are 123 to 126
                                         {123, 0}, {126, 0}, {124, 1}, {126, 1}, {125, 4}, {123, 3}, {123, 2}, {126, 2},
                                         {124, 3}, {126, 0}, {125, 3}, {124, 4}, {124, 5}, {125, 5}, {123, 4}, {125, 7},
                                         {124, 7}, {125, 7}, {126, 4}, {37, 4},  {117, 4}, {127, 4}};
  size_t selected = 0;
  for (const auto& [key, next] : walk) {
    redraws = 0;
    EXPECT_EQ(table.grid().keyDown(key), key >= 123 && key <= 126) << key;
    EXPECT_EQ(table.selectionIndex(), next) << key << " from " << selected;
    EXPECT_EQ(redraws, next == std::exchange(selected, next) ? 0 : 1);
  }
  const std::pair<double, size_t> columns[] = {{400, 4}, {199, 1}, {99, 1}, {0, 1}, {5000, 8}};
  for (const auto& [width, count] : columns) {
    table.grid().setWidths(width, 100);
    EXPECT_EQ(table.grid().numberOfColumns(), count) << width;
  }
}

}  // namespace

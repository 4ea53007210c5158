#include "Model/AppFolderItem.h"
#include "Support/AppTree.h"

namespace {

using testing::ElementsAre;

std::vector<std::string> names(const AppFolderItem::Items& items) {
  std::vector<std::string> result;
  for (const auto& item : items) result.push_back(item->displayName());
  return result;
}

// Two folders as the table shows them: with a way up before their content.
std::shared_ptr<AppFolderItem> sampleTree() {
  auto office = folder("Office", {app("Writer"), folder("Old", {app("calc 97")}), app("Calc")});
  office->insertItem(named(AppFolderItem::appBackFolder(), "Back to calc"), 0);
  return folder("root", {office, folder("Calculators", {app("bc")})});
}

TEST(AppFolderItem, ListsEachFoldersItemsBeforeThoseOfItsFolders) {
  const std::vector<std::string> all = {"Office", "Calculators", "Back to calc", "Writer",
                                        "Old",    "Calc",        "calc 97",      "bc"};
  EXPECT_EQ(names(sampleTree()->allApplicationItems()), all);
  EXPECT_EQ(names(sampleTree()->applicationItemsUsingFilterPattern("")), all);
}

TEST(AppFolderItem, FindsNamesThatHaveThePatternInThem) {
  const struct {
    std::string pattern;
    std::vector<std::string> found;
  } cases[] = {
      {"CALC", {"Calculators", "Calc", "calc 97"}},
      {"*", {"Office", "Calculators", "Writer", "Old", "Calc", "calc 97", "bc"}},
      {"c*t", {"Calculators"}},
      {"f?c", {"Office"}},
      {"c ?7", {"calc 97"}},
      {"back", {}},
      {"\\*", {}},
  };
  for (const auto& [pattern, found] : cases) {
    EXPECT_EQ(names(sampleTree()->applicationItemsUsingFilterPattern(pattern)), found) << pattern;
  }
  const auto quoted = folder("", {app("C:*"), app("C:*x"), app("C:")});
  EXPECT_THAT(names(quoted->applicationItemsUsingFilterPattern("c:\\")), ElementsAre("C:*"));
}

TEST(AppFolderItem, SortsEveryFolderIgnoringCaseAndKeepsTheOrderOfEqualNames) {
  const auto inner = folder("b", {app("É"), app("z"), app("éa"), app("Zz"), app("\xFF"), app("é"), app("A")});
  const auto root = folder("root", {app("c"), inner, app("B"), app("a")});
  root->sortContentAlphabetically();
  EXPECT_THAT(names(root->appItems()), ElementsAre("a", "b", "B", "c"));
  EXPECT_THAT(names(inner->appItems()), ElementsAre("A", "z", "Zz", "É", "é", "éa", "\xFF"));

  inner->appItems()[0]->setDisplayName("y");
  root->sortAppItemsUsingComparator(
      [](const AppItem& first, const AppItem& second) { return first.displayName() < second.displayName(); });
  EXPECT_THAT(names(root->appItems()), ElementsAre("B", "a", "b", "c"));
  EXPECT_EQ(inner->appItems()[0]->displayName(), "y");
  root->sortContentAlphabetically();
  EXPECT_THAT(names(inner->appItems()), ElementsAre("y", "z", "Zz", "É", "é", "éa", "\xFF"));
}

TEST(AppFolderItem, IsTheParentOfWhatItHolds) {
  const auto first = app("1"), second = app("2"), third = app("3");
  auto root = folder("root", {first, third, first});
  root->insertItem(second, 1);
  root->insertItem(app("4"), 99);
  EXPECT_THAT(names(root->appItems()), ElementsAre("1", "2", "3", "1", "4"));
  EXPECT_EQ(second->parentFolder(), root);

  root->removeItem(first);
  EXPECT_FALSE(root->containItem(first));
  EXPECT_EQ(first->parentFolder(), nullptr);
  const auto other = folder("other", {root, first});
  root->removeItem(first);
  EXPECT_EQ(first->parentFolder(), other);
  EXPECT_FALSE(other->containItem(second));

  root->addItems(root->appItems());
  EXPECT_THAT(names(root->appItems()), ElementsAre("2", "3", "4", "2", "3", "4"));
  root->removeItems(root->appItems());
  EXPECT_TRUE(root->appItems().empty());
  EXPECT_EQ(second->parentFolder(), nullptr);

  root->addItem(third);
  other->removeItem(root);
  root.reset();
  EXPECT_EQ(third->parentFolder(), nullptr);
}

TEST(AppFolderItem, CopiesAllThatItHolds) {
  const auto root = sampleTree();
  const auto writer = root->allApplicationItems()[3];
  writer->setName("writer.exe");
  writer->setIcon(std::make_shared<IconImage>());
  const auto office = std::static_pointer_cast<AppFolderItem>(root->appItems()[0]);

  const std::shared_ptr<AppFolderItem> copy = office->copy();
  EXPECT_EQ(copy->parentFolder(), root);
  EXPECT_EQ(names(copy->allApplicationItems()), names(office->allApplicationItems()));
  for (const auto& item : copy->appItems()) {
    EXPECT_EQ(item->parentFolder(), copy);
    EXPECT_FALSE(office->containItem(item));
  }
  EXPECT_EQ(copy->allApplicationItems().back()->parentFolder(), copy->appItems()[2]);
  EXPECT_FALSE(copy->isBackFolder());
  EXPECT_EQ(copy->applicationItemsUsingFilterPattern("back").size(), 0U);

  const std::shared_ptr<AppItem> writerCopy = writer->copy();
  EXPECT_EQ(writerCopy->name(), "writer.exe");
  EXPECT_EQ(writerCopy->icon(), writer->icon());
  EXPECT_EQ(writerCopy->parentFolder(), office);
  EXPECT_TRUE(static_cast<const AppItem&>(*office).copy()->isFolder());
}

TEST(AppFolderItem, HandlesDeepAndWideTrees) {
  constexpr size_t kDepth = 100'000, kWidth = 50'000;
  auto root = AppFolderItem::appFolder();
  auto deepest = root;
  for (size_t depth = 0; depth < kDepth; ++depth) {
    const auto next = folder("f");
    deepest->addItem(next);
    deepest = next;
  }
  for (size_t number = kWidth; number > 0; --number) deepest->addItem(app(std::to_string(number)));
  auto copy = root->copy();
  root.reset();
  EXPECT_EQ(deepest->parentFolder(), nullptr);
  copy->sortContentAlphabetically();
  EXPECT_EQ(copy->allApplicationItems().size(), kDepth + kWidth);
  EXPECT_THAT(names(copy->applicationItemsUsingFilterPattern("4999?")),
              ElementsAre("49990", "49991", "49992", "49993", "49994", "49995", "49996", "49997", "49998", "49999"));
  deepest->removeItems(deepest->appItems());
  EXPECT_TRUE(deepest->appItems().empty());
}

}  // namespace

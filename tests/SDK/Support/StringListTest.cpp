#include <climits>

#include "Support/StringList.h"

namespace {

// All items, in the order of their indexes.
std::vector<std::string> itemsOf(const char* list) {
  std::vector<std::string> items;
  char buffer[32];
  while (ovutils_stringlist_get_item(list, static_cast<int>(items.size()), buffer, sizeof buffer) == 1) {
    items.push_back(buffer);
  }
  return items;
}

struct ListCase {
  const char* list;
  int size;
  std::vector<std::string> items;
};

TEST(StringList, TheSizeCountsEmptyItemsAndTheIndexesDoNot) {
  const ListCase cases[] = {
      {nullptr, 0, {}},
      {"", 0, {}},
      {"a", 1, {"a"}},
      {"a,b", 2, {"a", "b"}},
      {"a,,b", 3, {"a", "b"}},
      {",a, b ,", 4, {"a", " b "}},
      {",", 2, {}},
  };
  for (const ListCase& row : cases) {
    EXPECT_EQ(ovutils_stringlist_get_size(row.list), row.size);
    EXPECT_EQ(itemsOf(row.list), row.items);
  }
}

TEST(StringList, AnItemIsCutToTheBufferAndTheRestOfTheBufferCleared) {
  std::string buffer = "xxxxxxxx";
  EXPECT_EQ(ovutils_stringlist_get_item("first,second", 1, buffer.data(), 4), 1);
  EXPECT_EQ(buffer, std::string("sec\0xxxx", 8));
  EXPECT_EQ(ovutils_stringlist_get_item("a", 0, buffer.data(), 6), 1);
  EXPECT_EQ(buffer, std::string("a\0\0\0\0\0xx", 8));
  EXPECT_EQ(ovutils_stringlist_get_item("a", 1, buffer.data(), 7), 0);
  EXPECT_EQ(buffer, std::string("\0\0\0\0\0\0\0x", 8));
}

TEST(StringList, WithoutABufferOnlyTheResultTells) {
  char untouched = 'x';
  EXPECT_EQ(ovutils_stringlist_get_item("a", 0, &untouched, 0), 1);
  EXPECT_EQ(untouched, 'x');
  EXPECT_EQ(ovutils_stringlist_get_item("a", 0, nullptr, 8), 1);
  EXPECT_EQ(ovutils_stringlist_get_item("a", -1, nullptr, 8), 0);
  EXPECT_EQ(ovutils_stringlist_get_item("a", INT_MAX, nullptr, 8), 0);
}

}  // namespace

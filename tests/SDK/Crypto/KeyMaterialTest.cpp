#include <algorithm>

#include "Crypto/KeyMaterial.h"

using namespace orvane::keymaterial;

// Whatever file was built in: these are what a site's own values have to satisfy.
namespace {

template <typename Table>
void expectScatterTable(const Table& table) {
  EXPECT_EQ(table.back(), table.size() - 1) << "the last entry must be the block's last position";
  Table sorted = table;
  std::sort(sorted.begin(), sorted.end());
  for (size_t i = 0; i < sorted.size(); ++i) {
    ASSERT_EQ(sorted[i], i) << "every position must stand in the table exactly once";
  }
}

TEST(KeyMaterial, Scatter256IsAPermutationThatEndsWithTheLastPosition) { expectScatterTable(kScatter256); }

TEST(KeyMaterial, Scatter1024IsAPermutationThatEndsWithTheLastPosition) { expectScatterTable(kScatter1024); }

}  // namespace

#include "Sessions/ObserverTable.h"

namespace {

struct Observer {
  std::function<void()> act = [] {};
  int calls = 0;
  void call() {
    ++calls;
    act();
  }
};
using Table = orvane::ObserverTable<Observer>;
const auto kCall = [](Observer& observer) { observer.call(); };

TEST(ObserverTable, AWalkFollowsTheOrderAndLeavesOutWhoIsRemovedOrAddedMeanwhile) {
  Table table;
  Observer first, second, third, late;
  table.add(&first);
  const uint32_t handle = table.add(&second);
  table.add(&third);
  table.add(&third);
  first.act = [&] {
    table.remove(handle);
    table.add(&late);
  };
  third.act = [&] { EXPECT_EQ(first.calls, 1); };
  table.callEach(kCall);
  EXPECT_EQ(second.calls, 0);
  EXPECT_EQ(third.calls, 2);
  EXPECT_EQ(late.calls, 0);
  EXPECT_FALSE(table.call(handle, kCall));
}

TEST(ObserverTable, HandlesAreNeverZeroAndNeverUsedTwice) {
  Table table(UINT32_MAX);
  Observer observer;
  EXPECT_EQ(table.add(&observer), UINT32_MAX);
  const uint32_t next = table.add(&observer);
  EXPECT_NE(next, 0u);
  table.remove(next);
  EXPECT_NE(table.add(&observer), next);
}

}  // namespace

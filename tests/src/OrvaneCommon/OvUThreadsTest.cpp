#include "OrvaneCommon/OvUThreads.h"
#include "Support/PumpedQueue.h"

namespace {

TEST(OvUThreads, AWorkersActionRunsOnTheMainThreadBeforeTheWorkerGoesOn) {
  PumpedQueue queue;
  bool ranOnMainThread = false;
  bool ranBefore = false;
  std::jthread worker([&] {
    OvU_ExecuteOnMainQueueSync(queue, [&] { ranOnMainThread = queue.isCurrentThread(); });
    ranBefore = ranOnMainThread;
  });
  EXPECT_TRUE(queue.pumpUntil([&] { return ranOnMainThread; }));
  worker.join();
  EXPECT_TRUE(ranBefore);
  bool ranAtOnce = false;
  OvU_ExecuteOnMainQueueSync(queue, [&] { ranAtOnce = true; });
  EXPECT_TRUE(ranAtOnce);
}

TEST(OvUThreads, AnActionThatTheQueueDropsHoldsUpNobody) {
  struct DroppingQueue : orvane::MainQueue {
    bool isCurrentThread() const override { return false; }
    void post(orvane::Work) override {}
  } queue;
  bool ran = false;
  OvU_ExecuteOnMainQueueSync(queue, [&] { ran = true; });
  EXPECT_FALSE(ran);
}

}  // namespace

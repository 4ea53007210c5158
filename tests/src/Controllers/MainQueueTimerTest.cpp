#include <gtest/gtest.h>

#include "Controllers/MainQueueTimer.h"
#include "Support/FakeTimer.h"
#include "Support/PumpedQueue.h"

using namespace std::chrono_literals;

TEST(MainQueueTimerTest, FiresOnTheMainThreadOnceOrAgainAndAgainUntilItIsInvalidated) {
  const auto clock = std::make_shared<FakeTimer>();
  const auto mainQueue = std::make_shared<PumpedQueue>();
  int fired = 0;
  std::optional<orvane::MainQueueTimer> timer(std::in_place, clock, mainQueue);
  const auto pass = [&](std::chrono::milliseconds time) {
    clock->advance(time);
    mainQueue->pump();
    return fired;
  };

  timer->startOnce(1000ms, [&] { ++fired; });
  EXPECT_EQ(pass(999ms), 0);
  EXPECT_TRUE(timer->isValid());
  EXPECT_EQ(pass(1ms), 1);
  EXPECT_FALSE(timer->isValid());

  timer->startRepeating(500ms, [&] { ++fired; });
  EXPECT_EQ(pass(500ms), 2);
  EXPECT_EQ(pass(500ms), 3);
  timer->startOnce(100ms, [&] { fired += 10; });  // in place of the repeating one
  EXPECT_EQ(pass(2000ms), 13);

  timer->startRepeating(500ms, [&] {
    ++fired;
    timer.reset();  // from its own work
  });
  EXPECT_EQ(pass(2000ms), 14);

  timer.emplace(clock, mainQueue);
  timer->startOnce(1ms, [&] { ++fired; });
  clock->advance(1ms);
  timer->invalidate();  // due, and queued
  EXPECT_EQ(pass(1ms), 14);
}

#include "Platform/Linux/Desktop/EventLoopMainQueue.h"
#include "QtApplicationOfTest.h"

namespace {

using orvane::EventLoopMainQueue;

// With each of the loops that the toolkit may run on.
class EventLoopMainQueueTest : public testing::TestWithParam<const char*> {
 protected:
  EventLoopMainQueueTest() {
    setenv("QT_NO_GLIB", GetParam(), 1);
    application_ = std::make_unique<QtApplicationOfTest>();
    queue_ = std::make_shared<EventLoopMainQueue>();
  }
  ~EventLoopMainQueueTest() override { unsetenv("QT_NO_GLIB"); }

  std::unique_ptr<QtApplicationOfTest> application_;
  std::shared_ptr<EventLoopMainQueue> queue_;
};

INSTANTIATE_TEST_SUITE_P(, EventLoopMainQueueTest, testing::Values("", "1"));

TEST_P(EventLoopMainQueueTest, RunsInTheOrderOfEachPosterAndLetsGoOfEachWorkBeforeTheNext) {
  constexpr int kPosters = 4, kWorks = 500;
  int next[kPosters] = {}, ran = 0, released = 0, wrong = 0;  // no atomics: all is the main thread's
  const auto release = [&](const int* owned) { ++released, wrong += !queue_->isCurrentThread(), delete owned; };
  std::vector<std::thread> posters;
  for (int poster = 0; poster < kPosters; ++poster) {
    posters.emplace_back([&, poster] {
      for (int number = 0; number < kWorks; ++number) {
        queue_->post([&, poster, number, owned = std::shared_ptr<int>(new int(0), release)] {
          wrong += next[poster]++ != number || released != ran++ || !queue_->isCurrentThread();
        });
      }
    });
  }
  EXPECT_TRUE(application_->until([&] { return released == kPosters * kWorks; }));
  for (std::thread& poster : posters) poster.join();
  EXPECT_EQ(wrong, 0);
}

TEST_P(EventLoopMainQueueTest, EventsHaveTheirTurnBetweenTwoWorks) {
  std::string order;
  for (int work = 0; work < 5; ++work) {
    queue_->post([&] {
      order += 'w';
      QMetaObject::invokeMethod(
          qApp, [&] { order += 'e'; }, Qt::QueuedConnection);
    });
  }
  EXPECT_TRUE(application_->until([&] { return order.size() == 10; }));
  EXPECT_EQ(order, "wewewewewe");
}

TEST_P(EventLoopMainQueueTest, GoesOnInALoopWithinAWork) {
  std::string order;
  QEventLoop inner;
  queue_->post([&] { order += '(', inner.exec(), order += ')'; });
  queue_->post([&] { order += '1'; });
  queue_->post([&] { order += '2', inner.quit(); });
  EXPECT_TRUE(application_->until([&] { return order.ends_with(')'); }));
  EXPECT_EQ(order, "(12)");
}

TEST_P(EventLoopMainQueueTest, RunsNothingAfterTheApplicationAndThingsGoWithIt) {
  bool isRun = false;
  const auto owned = std::make_shared<int>();
  queue_->post([&isRun, owned, queue = queue_] { isRun = true; });
  application_.reset();
  EXPECT_EQ(owned.use_count() + queue_.use_count(), 2);
  queue_->post([&isRun, owned] { isRun = true; });
  queue_.reset();
  EXPECT_EQ(owned.use_count(), 1);
  EXPECT_FALSE(isRun);
}

}  // namespace

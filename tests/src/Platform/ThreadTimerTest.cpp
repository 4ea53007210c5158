#include <future>

#include "Platform/ThreadTimer.h"

namespace {

using namespace std::chrono_literals;

TEST(ThreadTimer, RunsWhatIsDueInTheOrderOfTimeAndNotBefore) {
  const auto timer = orvane::makeTimer();
  const auto start = std::chrono::steady_clock::now();
  std::string order;  // no mutex: ThreadSanitizer sees it if there are two threads
  std::promise<std::chrono::steady_clock::time_point> end;
  timer->after(30ms, [&] { end.set_value(std::chrono::steady_clock::now()); });
  timer->after(20ms, [&] {
    order += 'c';
    timer->after(-1h, [&] { order += 'd'; });
  });
  timer->after(std::chrono::milliseconds::max(), [&] { order += 'z'; });
  timer->after(10ms, [&] { order += 'b'; });
  timer->after(0ms, [&] { order += 'a'; });
  EXPECT_GE(end.get_future().get(), start + 30ms);
  EXPECT_EQ(order, "abcd");
}

TEST(ThreadTimer, LetGoFromItsOwnWorkStillRunsTheRest) {
  auto timer = orvane::makeTimer();
  const std::weak_ptr watched = timer;
  std::promise<void> posted;
  std::promise<bool> timerIsGone;
  // The last reference goes with the first work's captures.
  timer->after(0ms, [mine = timer, all = posted.get_future().share()] { all.wait(); });
  timer->after(1ms, [&] { timerIsGone.set_value(watched.expired()); });
  timer.reset();
  posted.set_value();
  EXPECT_TRUE(timerIsGone.get_future().get());
}

}  // namespace

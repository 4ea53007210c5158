#include <algorithm>
#include <atomic>
#include <future>

#include <pthread.h>

#include "Platform/EndProcess.h"
#include "Platform/ThreadQueues.h"

namespace {

using std::filesystem::directory_iterator;

constexpr std::chrono::seconds kPatience{60};

// Something that happens once, on any thread. Copies speak of the same.
class Event {
 public:
  void happen() const { promise_->set_value(); }
  // False if nothing happens. Callable on any thread.
  bool wait() const { return std::shared_future(happened_).wait_for(kPatience) == std::future_status::ready; }

 private:
  std::shared_ptr<std::promise<void>> promise_ = std::make_shared<std::promise<void>>();
  std::shared_future<void> happened_ = promise_->get_future().share();
};

// Waits until all that was posted to a serial queue has run.
bool finish(orvane::SerialQueue& queue) {
  const Event end;
  queue.post([end] { end.happen(); });
  return end.wait();
}

// Whether the process has so many threads of serial queues, now or soon.
bool serialThreadsAre(ptrdiff_t count) {
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  for (;;) {
    const ptrdiff_t found = std::ranges::count_if(directory_iterator("/proc/self/task"), [](const auto& thread) {
      std::string name;
      return std::getline(std::ifstream(thread.path() / "comm"), name) && name == "orvane-serial";
    });
    if (found == count) return true;
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::yield();
  }
}

TEST(SerialQueue, RunsOneAtATimeInTheOrderOfEachPoster) {
  constexpr int kPosters = 4, kWorks = 500;
  const auto queue = orvane::makeSerialQueue();
  int next[kPosters] = {};  // no atomics: ThreadSanitizer sees it if two pieces of work aren't in sequence
  int wrong = 0;
  std::vector<std::thread> posters;
  for (int poster = 0; poster < kPosters; ++poster) {
    posters.emplace_back([&, poster] {
      for (int number = 0; number < kWorks; ++number) {
        queue->post([&, poster, number] { wrong += next[poster]++ != number; });
      }
    });
  }
  for (std::thread& poster : posters) poster.join();
  ASSERT_TRUE(finish(*queue));
  EXPECT_EQ(wrong, 0);
  EXPECT_THAT(next, testing::Each(kWorks));
}

TEST(SerialQueue, OneDoesNotWaitForAnother) {
  const auto first = orvane::makeSerialQueue(), second = orvane::makeSerialQueue();
  const Event firstRuns, secondRuns;
  std::promise<bool> met;
  first->post([&] {
    firstRuns.happen();
    met.set_value(secondRuns.wait());
  });
  second->post([=] {
    firstRuns.wait();
    secondRuns.happen();
  });
  EXPECT_TRUE(met.get_future().get());
}

TEST(SerialQueue, TakesAThreadAtItsFirstWorkAndGivesItBackWhenLetGo) {
  std::vector<std::shared_ptr<orvane::SerialQueue>> queues(10'000);
  std::ranges::generate(queues, orvane::makeSerialQueue);
  EXPECT_TRUE(serialThreadsAre(0));
  for (int round = 0; round < 3; ++round) ASSERT_TRUE(finish(*queues.front()));
  EXPECT_TRUE(serialThreadsAre(1));
  queues.clear();
  EXPECT_TRUE(serialThreadsAre(0));
}

TEST(SerialQueue, LetGoFromItsOwnWorkStillRunsTheRest) {
  auto queue = orvane::makeSerialQueue();
  const std::weak_ptr watched = queue;
  const Event posted;
  std::promise<bool> queueIsGone;
  // The last reference goes with the first work's captures.
  queue->post([posted, mine = queue] { posted.wait(); });
  queue->post([&] { queueIsGone.set_value(watched.expired()); });
  queue.reset();
  posted.happen();
  EXPECT_TRUE(queueIsGone.get_future().get());
}

TEST(SerialQueue, ReleasesWhatWorkOwnsOnItsThreadBeforeTheNextWork) {
  const auto queue = orvane::makeSerialQueue();
  std::thread::id worker, releaser;
  bool releasedInTime = false;
  std::shared_ptr<int> owned(new int(0), [&](int* number) {
    delete number;
    releaser = std::this_thread::get_id();
    queue->post([] {});
  });
  queue->post([&worker, mine = std::move(owned)] { worker = std::this_thread::get_id(); });
  queue->post([&] { releasedInTime = releaser == std::this_thread::get_id(); });
  ASSERT_TRUE(finish(*queue));
  EXPECT_TRUE(releasedInTime);
  EXPECT_EQ(worker, releaser);
}

TEST(GlobalQueue, RunsOnWhileItsWorkersAreBlocked) {
  constexpr int kBlocked = 100;
  const auto queue = orvane::makeGlobalQueue();
  const Event answer;
  std::atomic<int> blocked = 0;
  const Event allBlocked, allEnded;
  for (int count = 0; count < kBlocked; ++count) {
    queue->post([&, answer, allBlocked, allEnded] {
      if (++blocked == kBlocked) allBlocked.happen();
      answer.wait();
      if (--blocked == 0) allEnded.happen();
    });
  }
  ASSERT_TRUE(allBlocked.wait());
  const Event ran;
  queue->post([ran] { ran.happen(); });
  EXPECT_TRUE(ran.wait());
  answer.happen();
  EXPECT_TRUE(allEnded.wait());
}

TEST(GlobalQueue, WorkThatGotNoThreadRunsWithTheNextPost) {
  pthread_attr_t usual, tooLarge;
  pthread_getattr_default_np(&usual);
  pthread_getattr_default_np(&tooLarge);
  pthread_attr_setstacksize(&tooLarge, size_t{1} << 60);
  const auto queue = orvane::makeGlobalQueue();
  const Event first, second, third;
  ASSERT_EQ(pthread_setattr_default_np(&tooLarge), 0);
  queue->post([=] {
    second.wait();
    first.happen();
  });
  queue->post([=] {
    third.wait();
    second.happen();
  });
  ASSERT_EQ(pthread_setattr_default_np(&usual), 0);
  queue->post([=] { third.happen(); });
  EXPECT_TRUE(first.wait());
}

struct AbortsAtExit {
  ~AbortsAtExit() { abort(); }
};

TEST(EndProcessDeathTest, NeitherWaitsForBlockedThreadsNorDestroysWhatTheyUse) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        static const AbortsAtExit object;
        const auto queue = orvane::makeSerialQueue();
        const Event blocked;
        queue->post([blocked] {
          blocked.happen();
          std::promise<void>().get_future().wait();
        });
        blocked.wait();
        orvane::endProcess(7);
      },
      testing::ExitedWithCode(7), "");
}

}  // namespace

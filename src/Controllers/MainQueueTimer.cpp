#include "Controllers/MainQueueTimer.h"

#include <utility>

namespace orvane {

struct MainQueueTimer::Run {
  MainQueueTimer& owner;  // alive while the run is: it alone holds it, but for a firing on the main thread
  std::chrono::milliseconds period;
  bool repeats;
  Work work;
};

MainQueueTimer::MainQueueTimer(std::shared_ptr<Timer> timer, std::shared_ptr<MainQueue> mainQueue)
    : timer_(std::move(timer)), mainQueue_(std::move(mainQueue)) {}

void MainQueueTimer::startOnce(std::chrono::milliseconds delay, Work work) { start(delay, false, std::move(work)); }

void MainQueueTimer::startRepeating(std::chrono::milliseconds period, Work work) {
  start(period, true, std::move(work));
}

void MainQueueTimer::start(std::chrono::milliseconds period, bool repeats, Work work) {
  run_ = std::make_shared<Run>(Run{*this, period, repeats, std::move(work)});
  scheduleNext(run_);
}

void MainQueueTimer::scheduleNext(const std::shared_ptr<Run>& run) {
  MainQueueTimer& timer = run->owner;
  timer.timer_->after(run->period, [mainQueue = timer.mainQueue_, waiting = std::weak_ptr(run)] {
    mainQueue->post([waiting] {
      const auto firing = waiting.lock();
      if (!firing) return;
      if (firing->repeats) {
        scheduleNext(firing);
      } else {
        firing->owner.run_.reset();
      }
      firing->work();
    });
  });
}

}  // namespace orvane

#include "Windows/Desktop/MainLoopWatch.h"

#include <algorithm>
#include <memory>
#include <semaphore>

namespace orvane {

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds kPause(5);

}  // namespace

MainLoopWatch::MainLoopWatch(std::shared_ptr<MainQueue> mainQueue)
    : mainQueue_(std::move(mainQueue)), thread_([this](const std::stop_token& stop) { measure(stop); }) {}

MainLoopWatch::~MainLoopWatch() = default;

void MainLoopWatch::measure(const std::stop_token& stop) {
  const auto answer = std::make_shared<std::binary_semaphore>(0);
  while (!stop.stop_requested()) {
    const Clock::time_point asked = Clock::now();
    mainQueue_->post([answer] { answer->release(); });
    while (!answer->try_acquire_for(kPause) && !stop.stop_requested()) {
    }
    longestGap_ =
        std::max(longestGap_.load(), std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - asked));
    std::this_thread::sleep_for(kPause);
  }
}

}  // namespace orvane

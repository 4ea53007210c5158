#include "OrvaneCommon/OvUThreads.h"

#include <semaphore>
#include <utility>

namespace {

// Tells a waiting thread that its work is done, or that it never will be.
class Ending {
 public:
  explicit Ending(std::shared_ptr<std::binary_semaphore> semaphore) : semaphore_(std::move(semaphore)) {}
  ~Ending() { semaphore_->release(); }
  Ending(const Ending&) = delete;
  Ending& operator=(const Ending&) = delete;

 private:
  const std::shared_ptr<std::binary_semaphore> semaphore_;
};

}  // namespace

void OvU_ExecuteOnMainQueueSync(orvane::MainQueue& mainQueue, const orvane::Work& action) {
  if (mainQueue.isCurrentThread()) {
    action();
    return;
  }
  const auto ended = std::make_shared<std::binary_semaphore>(0);
  mainQueue.post([action, ending = std::make_shared<Ending>(ended)] { action(); });
  ended->acquire();
}

void OvU_TerminateAppAsyncOnMainQueue(orvane::MainQueue& mainQueue, orvane::Work terminate) {
  mainQueue.post(std::move(terminate));
}

#include "Platform/Linux/Desktop/EventLoopMainQueue.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <cerrno>
#include <cstdint>
#include <list>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include <sys/eventfd.h>
#include <unistd.h>

#include "Support/FileDescriptor.h"

namespace orvane {

// The waiting work, and a descriptor that is readable as long as there is some: a loop looks at descriptors once in
// each pass, while it goes on with posted events until there are none.
class EventLoopMainQueue::Waiting {
 public:
  Waiting() : descriptor_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (!descriptor_.isOpen()) throw std::system_error(errno, std::generic_category(), "eventfd");
  }

  int descriptor() const { return descriptor_.number(); }
  bool isMainThread() const { return std::this_thread::get_id() == mainThread_; }

  void post(Work work) {
    std::list<Work> posted;
    posted.push_back(std::move(work));
    const std::lock_guard lock(mutex_);
    const bool wasEmpty = works_.empty();
    works_.splice(works_.end(), posted);
    if (wasEmpty) eventfd_write(descriptor_.number(), 1);
  }

  // An empty list, or one of the next work.
  std::list<Work> take() {
    std::list<Work> taken;
    const std::lock_guard lock(mutex_);
    if (!works_.empty()) taken.splice(taken.begin(), works_, works_.begin());
    eventfd_t count = 0;
    if (works_.empty()) eventfd_read(descriptor_.number(), &count);
    return taken;
  }
  std::list<Work> takeAll() {
    const std::lock_guard lock(mutex_);
    return std::exchange(works_, {});
  }

 private:
  const std::thread::id mainThread_ = std::this_thread::get_id();
  FileDescriptor descriptor_;
  std::mutex mutex_;
  std::list<Work> works_{};
};

// The application's end of the queue.
class EventLoopMainQueue::Runner : public QObject {
 public:
  explicit Runner(std::shared_ptr<Waiting> waiting)
      : QObject(QCoreApplication::instance()),
        waiting_(std::move(waiting)),
        notifier_(waiting_->descriptor(), QSocketNotifier::Read) {
    connect(&notifier_, &QSocketNotifier::activated, this, [this] {
      const std::shared_ptr<Waiting> kept = waiting_;  // the work may end the application
      std::list<Work> work = kept->take();
      if (!work.empty()) work.front()();
    });
  }
  ~Runner() override {
    notifier_.setEnabled(false);
    const std::list<Work> dropped = waiting_->takeAll();
  }
  Runner(const Runner&) = delete;
  Runner& operator=(const Runner&) = delete;

 private:
  const std::shared_ptr<Waiting> waiting_;
  QSocketNotifier notifier_;
};

EventLoopMainQueue::EventLoopMainQueue() : waiting_(std::make_shared<Waiting>()) { new Runner(waiting_); }

EventLoopMainQueue::~EventLoopMainQueue() = default;

void EventLoopMainQueue::post(Work work) {
  const std::shared_ptr<Waiting> waiting = waiting_;  // the work may let this queue go before post() has returned
  waiting->post(std::move(work));
}

bool EventLoopMainQueue::isCurrentThread() const { return waiting_->isMainThread(); }

}  // namespace orvane

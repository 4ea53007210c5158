#include "Sessions/NamedSemaphore.h"

#include <cerrno>
#include <ctime>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvane {

namespace {

// A semaphore is a small mapped file. Whoever owns the file can shorten it, and the next use of it would end us.
bool isSafeToUse(const std::string& name) {
  const std::string path = "/dev/shm/sem." + name.substr(name.find_first_not_of('/'));
  struct stat file {};
  if (stat(path.c_str(), &file) != 0) return false;
  if (!S_ISREG(file.st_mode) || file.st_size < static_cast<off_t>(sizeof(sem_t)))
    errno = EINVAL;
  else if (file.st_uid != geteuid())
    errno = EACCES;
  else
    return true;
  return false;
}

}  // namespace

NamedSemaphore::~NamedSemaphore() {
  if (semaphore_) sem_close(semaphore_);
}

bool NamedSemaphore::open(const std::string& name) {
  sem_t* const semaphore = sem_open(name.c_str(), O_CREAT, 0644, 1);
  if (semaphore == SEM_FAILED) return false;
  if (!isSafeToUse(name)) {
    const int reason = errno;
    sem_close(semaphore);
    errno = reason;
    return false;
  }
  semaphore_ = semaphore;
  return true;
}

bool NamedSemaphore::take() {
  timespec deadline{};
  clock_gettime(CLOCK_MONOTONIC, &deadline);
  if (!isStuck_) deadline.tv_sec += kPatienceSeconds;
  while (sem_clockwait(semaphore_, CLOCK_MONOTONIC, &deadline) != 0) {
    if (errno == EINTR) continue;
    isStuck_ = true;
    return false;
  }
  isStuck_ = false;
  // The language's memory model, and the race checkers with it, know nothing of this semaphore: say that what a thread
  // of this process wrote in the turn before is seen in this one.
  turns_.load(std::memory_order_acquire);
  return true;
}

void NamedSemaphore::give() {
  turns_.fetch_add(1, std::memory_order_release);
  sem_post(semaphore_);
}

}  // namespace orvane

#include "Support/OvWriteLog.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <mutex>
#include <string>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr size_t kPathCapacity = 512;

struct Log {
  std::atomic<int32_t> level{2};
  std::atomic<uint32_t> delay{0};
  std::atomic<bool> hasFile{false};
  std::mutex mutex;
  std::string path;  // guarded by mutex
};

// Never destroyed: other objects may log while the process ends.
Log& theLog() {
  static Log& log = *new Log;
  return log;
}

std::string linePrefix() {
  const time_t now = time(nullptr);
  tm local{};
  localtime_r(&now, &local);
  char text[96];
  const size_t length = strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S: ", &local);
  snprintf(text + length, sizeof text - length, "%lu:%lu: ", static_cast<unsigned long>(getpid()),
           static_cast<unsigned long>(gettid()));
  return text;
}

std::string formatted(const char* format, va_list arguments) {
  va_list counting;
  va_copy(counting, arguments);
  const int length = vsnprintf(nullptr, 0, format, counting);
  va_end(counting);
  if (length <= 0) return {};
  std::string text(static_cast<size_t>(length) + 1, '\0');
  vsnprintf(text.data(), text.size(), format, arguments);
  text.pop_back();
  return text;
}

void appendToFile(const std::string& path, const std::string& line) {
  const int file = open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
  if (file < 0) return;
  size_t done = 0;
  while (done < line.size()) {
    const ssize_t written = write(file, line.data() + done, line.size() - done);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) break;
    done += static_cast<size_t>(written);
  }
  close(file);
}

}  // namespace

void OvWriteLog(int level, const char* format, ...) {
  Log& log = theLog();
  const int callersErrno = errno;
  const uint32_t delay = log.delay.load(std::memory_order_relaxed);
  if (delay > 0) std::this_thread::sleep_for(std::chrono::milliseconds(delay));
  errno = callersErrno;
  if (!log.hasFile.load(std::memory_order_relaxed) || level > log.level.load(std::memory_order_relaxed)) return;

  va_list arguments;
  va_start(arguments, format);
  const std::string message = formatted(format, arguments);
  va_end(arguments);
  {
    const std::scoped_lock lock(log.mutex);
    appendToFile(log.path, linePrefix() + message + '\n');
  }
  errno = callersErrno;
}

void OvSetLogLevel(int32_t level) { theLog().level = level; }

void OvSetLogFile(const char* path) {
  Log& log = theLog();
  const std::scoped_lock lock(log.mutex);
  const bool usable = path && *path && strlen(path) < kPathCapacity;
  log.path = usable ? path : "";
  log.hasFile = usable;
}

void OvSetLogDelay(uint32_t delay) { theLog().delay = delay; }

void OvDeleteLog() {
  Log& log = theLog();
  const std::scoped_lock lock(log.mutex);
  if (!log.path.empty()) unlink(log.path.c_str());
}

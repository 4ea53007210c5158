#include "Support/OvWriteLog.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>
#include <mutex>
#include <string_view>
#include <thread>
#include <type_traits>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr size_t kPathCapacity = 512;

// Zero-terminated text of the C library's functions.
struct Freeing {
  void operator()(char* text) const { free(text); }
};
using Text = std::unique_ptr<char, Freeing>;

struct Log {
  std::atomic<int32_t> level{2};
  std::atomic<uint32_t> delay{0};
  std::atomic<bool> hasFile{false};
  std::mutex mutex;
  char path[kPathCapacity] = {};  // guarded by mutex
};

constinit Log theLog;
static_assert(std::is_trivially_destructible_v<Log>, "other objects may log while the process ends");

// These two give null where memory is short: a callback of a C library, which no exception may pass, logs too.
Text formatted(const char* format, va_list arguments) {
  char* text = nullptr;
  return Text(vasprintf(&text, format, arguments) < 0 ? nullptr : text);
}

Text lineOf(const char* message) {
  const time_t now = time(nullptr);
  tm local{};
  localtime_r(&now, &local);
  char timeText[64];
  timeText[strftime(timeText, sizeof timeText, "%Y-%m-%d %H:%M:%S: ", &local)] = '\0';
  char* line = nullptr;
  const int length = asprintf(&line, "%s%lu:%lu: %s\n", timeText, static_cast<unsigned long>(getpid()),
                              static_cast<unsigned long>(gettid()), message);
  return Text(length < 0 ? nullptr : line);
}

void appendToFile(const char* path, std::string_view line) {
  const int file = open(path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
  if (file < 0) return;
  while (!line.empty()) {
    const ssize_t written = write(file, line.data(), line.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) break;
    line.remove_prefix(static_cast<size_t>(written));
  }
  close(file);
}

}  // namespace

void OvWriteLog(int level, const char* format, ...) noexcept {
  const int callersErrno = errno;
  const uint32_t delay = theLog.delay.load(std::memory_order_relaxed);
  if (delay > 0) std::this_thread::sleep_for(std::chrono::milliseconds(delay));
  errno = callersErrno;
  if (!theLog.hasFile.load(std::memory_order_relaxed) || level > theLog.level.load(std::memory_order_relaxed)) return;

  va_list arguments;
  va_start(arguments, format);
  const Text message = formatted(format, arguments);
  va_end(arguments);
  if (message) {
    const std::scoped_lock lock(theLog.mutex);
    if (const Text line = lineOf(message.get())) appendToFile(theLog.path, line.get());
  }
  errno = callersErrno;
}

void OvSetLogLevel(int32_t level) noexcept { theLog.level = level; }

void OvSetLogFile(const char* path) noexcept {
  const size_t length = path ? strnlen(path, kPathCapacity) : 0;
  const bool usable = length > 0 && length < kPathCapacity;
  const std::scoped_lock lock(theLog.mutex);
  memset(theLog.path, 0, sizeof theLog.path);
  if (usable) memcpy(theLog.path, path, length);
  theLog.hasFile = usable;
}

void OvSetLogDelay(uint32_t delay) noexcept { theLog.delay = delay; }

void OvDeleteLog() noexcept {
  const std::scoped_lock lock(theLog.mutex);
  if (theLog.path[0] != '\0') unlink(theLog.path);
}

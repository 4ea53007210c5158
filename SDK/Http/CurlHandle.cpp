#include "Http/CurlHandle.h"

#include <cerrno>
#include <csignal>
#include <ctime>

namespace orvane {
namespace {

// Holds SIGPIPE back from this thread while it lives, and drops the one that came.
class NoBrokenPipe {
 public:
  NoBrokenPipe() {
    sigset_t pending;
    sigpending(&pending);
    wasPending_ = sigismember(&pending, SIGPIPE) == 1;
    sigemptyset(&brokenPipe_);
    sigaddset(&brokenPipe_, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &brokenPipe_, &before_);
  }
  ~NoBrokenPipe() {
    constexpr timespec kNow{};
    while (!wasPending_ && sigtimedwait(&brokenPipe_, nullptr, &kNow) < 0 && errno == EINTR) {
    }
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }
  NoBrokenPipe(const NoBrokenPipe&) = delete;
  NoBrokenPipe& operator=(const NoBrokenPipe&) = delete;

 private:
  sigset_t brokenPipe_{};
  sigset_t before_{};
  bool wasPending_ = false;
};

}  // namespace

void CurlHandleDeleter::operator()(CURL* handle) const {
  const NoBrokenPipe noBrokenPipe;
  curl_easy_cleanup(handle);
}

CurlHandle makeCurlHandle() {
  // Never undone: other threads may hold handles until the process ends.
  static const CURLcode setUp = curl_global_init(CURL_GLOBAL_ALL);
  return CurlHandle(setUp == CURLE_OK ? curl_easy_init() : nullptr);
}

CURLcode performTransfer(CURL* handle) {
  const NoBrokenPipe noBrokenPipe;
  curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
  return curl_easy_perform(handle);
}

}  // namespace orvane

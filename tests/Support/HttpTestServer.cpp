#include "Support/HttpTestServer.h"

#include <cstdlib>

// A proxy that the environment names must not come between a test and its server. Set before there are threads.
[[maybe_unused]] static const int kNoProxy = setenv("no_proxy", "*", 1);

constexpr size_t kLargestRequest = 16 << 20;

HttpTestServer::HttpTestServer(Handler handler, Security security)
    : handler_(std::move(handler)),
      security_(security),
      server_(
          "127.0.0.1", 0,
          security == Security::kTls ? orvane::demo::makeTlsIdentity({"localhost"}) : orvane::demo::TlsIdentity(),
          [this](const auto& request, const auto& stream) { return answer(request, stream); }, kLargestRequest) {}

std::string HttpTestServer::url(const std::string& target) const {
  return (security_ == Security::kTls ? "https://127.0.0.1:" : "http://127.0.0.1:") + std::to_string(port()) + target;
}

std::vector<HttpTestServer::Request> HttpTestServer::requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

void HttpTestServer::waitForRequests(size_t count) const {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [&] { return requests_.size() >= count; });
}

orvane::demo::Answer HttpTestServer::answer(const Request& request, const orvane::demo::ConnectionStream& stream) {
  {
    const std::lock_guard lock(mutex_);
    requests_.push_back(request);
  }
  changed_.notify_all();

  const Answer answer = handler_(request);
  if (answer.stall && !stream.waitFor(released_)) return {.delivery = Delivery::kNone};
  return {.status = answer.status,
          .contentType = "text/xml",
          .location = answer.location,
          .body = std::make_shared<const std::string>(answer.body),
          .delivery = answer.delivery,
          .cutBehind = answer.cutBehind,
          .announcedSize = answer.announcedSize};
}

#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "demo-broker/ConnectionServer.h"

/// The demo broker's web server on a free port of 127.0.0.1, with answers that a test scripts. Any thread.
class HttpTestServer {
 public:
  enum class Security { kPlain, kTls };

  using Request = httplib::Request;
  using Delivery = orvane::demo::Answer::Delivery;

  struct Answer {
    int status = 200;
    std::string body{};
    std::string location{};  ///< the header of this name, if it isn't empty
    bool stall = false;      ///< nothing is sent before release() is called
    Delivery delivery = Delivery::kWhole;
    size_t cutBehind = 0;                   ///< bytes of the body, for Delivery::kCut
    std::optional<size_t> announcedSize{};  ///< for Delivery::kCut: a lie about the body's size
  };

  /// Makes the answer to a request; called on the threads of the connections, at the same time if there are several.
  using Handler = std::function<Answer(const Request&)>;

  /// With `kTls` the server shows a self-signed certificate for "localhost" that is made for it.
  /// @throws std::runtime_error if there is no port or certificate to be had.
  explicit HttpTestServer(Handler handler, Security security = Security::kPlain);

  int port() const { return server_.port(); }
  /// "http://127.0.0.1:port" or the like of https, and `target`.
  std::string url(const std::string& target = "/") const;

  /// How many connections were accepted so far.
  size_t connections() const { return server_.acceptedConnections(); }
  /// All requests so far, in the order in which they were complete.
  std::vector<Request> requests() const;
  /// Waits until so many requests have come in, since the start; the answer to the last may still be under way.
  void waitForRequests(size_t count) const;
  /// Lets go of all stalled answers, also of those that would stall later.
  void release() { released_.raise(); }

 private:
  orvane::demo::Answer answer(const Request& request, const orvane::demo::ConnectionStream& stream);

  const Handler handler_;
  const Security security_;
  orvane::demo::Signal released_;
  mutable std::mutex mutex_;
  mutable std::condition_variable changed_;
  std::vector<Request> requests_;
  orvane::demo::ConnectionServer server_;  // last, as it answers from its beginning to its end
};

#pragma once

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

struct ssl_ctx_st;

/// An HTTP or HTTPS server on a free port of 127.0.0.1 whose answers, and faults, a test scripts.
///
/// It serves from the end of the constructor on, each connection on a thread of its own and kept alive as long as the
/// client likes. All members may be called on any thread.
class HttpTestServer {
 public:
  enum class Security { kPlain, kTls };

  struct Request {
    std::string method;
    std::string target;                          ///< path and query, as they were sent
    std::map<std::string, std::string> headers;  ///< by name in lower case; of a repeated one the last
    std::string body;                            ///< what Content-Length announced
  };

  struct Answer {
    int status = 200;
    std::string body{};
    /// Sent in this order. Content-Length is added unless it is among them, so that a test can lie about it.
    std::vector<std::pair<std::string, std::string>> headers{};

    bool stall = false;           ///< nothing is sent before release() is called
    bool oneByteAtATime = false;  ///< each byte is a packet of its own
    bool endless = false;         ///< the body is repeated, without Content-Length, until the client hangs up
    /// The connection is closed once this many bytes, the head's included, are sent, or all if they are fewer. 0 gives
    /// no answer at all.
    std::optional<size_t> cutAfter{};
  };

  /// Makes the answer to a request; called on the threads of the connections, at the same time if there are several.
  using Handler = std::function<Answer(const Request&)>;

  /// With `kTls` the server shows a self-signed certificate that is made for it.
  /// @throws std::runtime_error if there is no port or certificate to be had.
  explicit HttpTestServer(Handler handler, Security security = Security::kPlain);
  /// Cuts all connections, stalled ones as well. Waits for nothing but a handler that is running.
  ~HttpTestServer();
  HttpTestServer(const HttpTestServer&) = delete;
  HttpTestServer& operator=(const HttpTestServer&) = delete;

  int port() const { return port_; }
  /// "http://127.0.0.1:port" or the like of https, and `target`.
  std::string url(const std::string& target = "/") const;

  /// How many connections were accepted so far.
  size_t connections() const;
  /// All requests so far, in the order in which they were complete.
  std::vector<Request> requests() const;
  /// Waits until so many requests have come in, since the start; the answer to the last may still be under way.
  void waitForRequests(size_t count) const;
  /// Lets go of all stalled answers, also of those that would stall later.
  void release();

 private:
  class Connection;

  void accept();
  void serve(int socket);
  bool answer(Connection& connection, const Request& request);

  const Handler handler_;
  std::shared_ptr<ssl_ctx_st> tls_;  // null without TLS
  int listener_ = -1;
  int port_ = 0;

  mutable std::mutex mutex_;
  mutable std::condition_variable changed_;
  bool stopping_ = false;
  bool released_ = false;
  size_t connections_ = 0;
  std::vector<Request> requests_;
  std::set<int> sockets_;  // those that a thread serves

  std::vector<std::thread> servers_;  // touched by acceptor_ alone, until it has ended
  std::thread acceptor_;
};

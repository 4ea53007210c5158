#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include <httplib.h>

#include "Certificate.h"
#include "ConnectionStream.h"
#include "Signal.h"

namespace orvane::demo {

/// An answer and how it is brought.
struct Answer {
  enum class Delivery { kWhole, kNone, kCut, kTrickle, kEndless };

  int status = 200;
  std::string contentType{};
  std::string location{};                     ///< the header of this name, if it isn't empty
  std::shared_ptr<const std::string> body{};  ///< null: none
  Delivery delivery = Delivery::kWhole;
  size_t cutBehind = 0;                   ///< bytes of the body, for kCut
  std::optional<size_t> announcedSize{};  ///< for kCut: the body's size as the head tells it, if not the true one
};

/// HTTP/1.1 over sockets of this machine alone: a thread for each connection, kept alive, and a prompt end.
///
/// The HTTP library does the protocol; the sockets and TLS are our own, since a fault has to reach the connection
/// itself and a stop has to reach a thread that waits.
class ConnectionServer : private httplib::Server {
 public:
  /// Makes the answer to a GET, HEAD, POST or CONNECT, on the connection's thread. May wait on `stream`.
  using AnswerFunction = std::function<Answer(const httplib::Request&, const ConnectionStream& stream)>;

  /// Listens on `ip`, one of 127.0.0.0/8, when it returns; `port` 0 takes any free one. `tls` without a context: plain
  /// HTTP. A request's body has at most `largestRequest` bytes. Throws std::runtime_error if the port can't be had.
  ConnectionServer(const std::string& ip, uint16_t port, TlsIdentity tls, AnswerFunction answer,
                   size_t largestRequest = 1 << 20);
  ~ConnectionServer() override;

  uint16_t port() const { return port_; }
  size_t acceptedConnections() const { return accepted_; }
  /// Ends all connections and waits for their threads. A second call does nothing. Not on a connection's thread.
  void stop();

 private:
  struct Connection {
    std::thread thread;
    std::atomic<bool> finished = false;
  };

  void acceptConnections();
  void serve(int socket);
  void deliver(const httplib::Request& request, httplib::Response& response);

  TlsIdentity tls_;
  AnswerFunction answer_;
  Signal stop_;
  uint16_t port_ = 0;  // before the listener, which fills it
  int listener_;
  std::atomic<size_t> accepted_ = 0;
  std::list<Connection> connections_;  // the accepting thread's until it has ended
  std::thread acceptor_;
};

}  // namespace orvane::demo

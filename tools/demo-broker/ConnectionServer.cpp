#include "ConnectionServer.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <stdexcept>

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace orvane::demo {
namespace {

// The library matches paths by a regular expression that recurses for each character.
constexpr size_t kLongestPath = 1024;

// The library hands its handlers no stream.
thread_local ConnectionStream* currentStream = nullptr;

int listenOn(const std::string& ip, uint16_t port, uint16_t& actualPort) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  constexpr in_addr_t kLoopbackNetwork = IN_LOOPBACKNET << IN_CLASSA_NSHIFT;
  socklen_t length = sizeof address;
  const int on = 1;
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  if (inet_pton(AF_INET, ip.c_str(), &address.sin_addr) != 1 ||
      (ntohl(address.sin_addr.s_addr) & IN_CLASSA_NET) != kLoopbackNetwork) {
    throw std::runtime_error("\"" + ip + "\" is no address of this machine alone");
  }
  const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  if (listener < 0 || setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on) != 0 ||
      bind(listener, generic, length) != 0 || listen(listener, SOMAXCONN) != 0 ||
      getsockname(listener, generic, &length) != 0) {
    const std::string reason = std::strerror(errno);
    if (listener >= 0) close(listener);
    throw std::runtime_error("can't listen on port " + std::to_string(port) + ": " + reason);
  }
  actualPort = ntohs(address.sin_port);
  return listener;
}

httplib::ContentProvider wholeBody(const std::shared_ptr<const std::string>& body) {
  return [body](size_t offset, size_t length, httplib::DataSink& sink) {
    return sink.write(body->data() + offset, length);
  };
}

httplib::ContentProvider cutBody(const std::shared_ptr<const std::string>& body, size_t end) {
  return [body, end](size_t offset, size_t, httplib::DataSink& sink) {
    if (offset < end) sink.write(body->data() + offset, end - offset);
    currentStream->abandon();
    return false;
  };
}

httplib::ContentProviderWithoutLength endlessBody(const std::shared_ptr<const std::string>& body) {
  return [body](size_t offset, httplib::DataSink& sink) {
    static const std::string blanks(65536, ' ');
    // All but the end of the last element, so that there is something to wait for.
    const size_t end = body->rfind("</");
    return offset == 0 && end != std::string::npos && end > 0 ? sink.write(body->data(), end)
                                                              : sink.write(blanks.data(), blanks.size());
  };
}

}  // namespace

ConnectionServer::ConnectionServer(const std::string& ip, uint16_t port, TlsIdentity tls, AnswerFunction answer,
                                   size_t largestRequest)
    : tls_(std::move(tls)), answer_(std::move(answer)), listener_(listenOn(ip, port, port_)) {
  const auto handler = [this](const httplib::Request& request, httplib::Response& response) {
    deliver(request, response);
  };
  const std::string anyPath = R"([\s\S]*)";
  Get(anyPath, handler);
  Post(anyPath, handler);
  set_pre_routing_handler([handler](const httplib::Request& request, httplib::Response& response) {
    if (request.path.size() > kLongestPath) {
      response.status = 414;
      currentStream->takeNoMoreRequests();
    } else if (request.method == "CONNECT") {  // for which the library has no routes
      handler(request, response);
    } else {
      return HandlerResponse::Unhandled;
    }
    return HandlerResponse::Handled;
  });
  set_payload_max_length(largestRequest);
  // The library takes a server without a socket for one that is shutting down, and sends no bodies.
  svr_sock_ = listener_;
  acceptor_ = std::thread([this] { acceptConnections(); });
}

ConnectionServer::~ConnectionServer() { stop(); }

void ConnectionServer::stop() {
  if (!acceptor_.joinable()) return;
  stop_.raise();
  svr_sock_ = -1;
  acceptor_.join();
  for (Connection& connection : connections_) connection.thread.join();
  connections_.clear();
  close(listener_);
}

void ConnectionServer::acceptConnections() {
  for (;;) {
    pollfd entries[] = {{listener_, POLLIN, 0}, {stop_.descriptor(), POLLIN, 0}};
    poll(entries, std::size(entries), -1);
    if (entries[1].revents != 0) return;
    const int socket = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket < 0) continue;
    ++accepted_;

    connections_.remove_if([](Connection& connection) {
      if (!connection.finished) return false;
      connection.thread.join();
      return true;
    });
    Connection& connection = connections_.emplace_back();
    connection.thread = std::thread([this, socket, &connection] {
      serve(socket);
      connection.finished = true;
    });
  }
}

void ConnectionServer::serve(int socket) {
  ConnectionStream stream(socket, tls_.context.get(), stop_);
  if (!stream.open()) return;
  currentStream = &stream;
  bool closed = false;
  while (!closed && stream.waitForRequest()) {
    if (!process_request(stream, false, closed, nullptr)) break;
  }
  currentStream = nullptr;
}

void ConnectionServer::deliver(const httplib::Request& request, httplib::Response& response) {
  const Answer answer = answer_(request, *currentStream);
  response.status = answer.status;
  if (!answer.location.empty()) response.set_header("Location", answer.location);
  if (answer.delivery == Answer::Delivery::kNone) currentStream->abandon();
  currentStream->trickle(answer.delivery == Answer::Delivery::kTrickle);
  if (!answer.body || answer.body->empty()) return;

  // Providers, since a content would be copied for each answer.
  switch (answer.delivery) {
    case Answer::Delivery::kEndless:
      response.set_chunked_content_provider(answer.contentType, endlessBody(answer.body));
      break;
    case Answer::Delivery::kCut:
      response.set_content_provider(answer.announcedSize.value_or(answer.body->size()), answer.contentType,
                                    cutBody(answer.body, std::min(answer.cutBehind, answer.body->size())));
      break;
    default:
      response.set_content_provider(answer.body->size(), answer.contentType, wholeBody(answer.body));
  }
}

}  // namespace orvane::demo

#include "Support/HttpTestServer.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <string_view>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <openssl/ssl.h>
#include <sys/socket.h>
#include <unistd.h>

#include "Support/TestCertificate.h"

// A proxy that the environment names must not come between a test and its server. Set before there are threads.
[[maybe_unused]] static const int kNoProxy = setenv("no_proxy", "*", 1);

/// The bytes of one connection, enciphered or not. Owned by the thread that serves it.
class HttpTestServer::Connection {
 public:
  Connection(int socket, SSL_CTX* tls) : socket_(socket) {
    const int on = 1;  // an answer's last packet must not wait for the client's acknowledgement
    setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    if (tls) {
      ssl_.reset(SSL_new(tls));
      SSL_set_fd(ssl_.get(), socket_);
    }
  }

  bool handshake() { return !ssl_ || SSL_accept(ssl_.get()) == 1; }

  /// The next request, or none if the client hung up or speaks something else.
  std::optional<Request> read() {
    constexpr std::string_view kEndOfHead = "\r\n\r\n";
    size_t end;
    while ((end = received_.find(kEndOfHead)) == std::string::npos) {
      if (!receive()) return std::nullopt;
    }
    const std::string head = received_.substr(0, end);
    received_.erase(0, end + kEndOfHead.size());

    Request request = parse(head);
    if (request.headers.contains("expect") && !write("HTTP/1.1 100 Continue\r\n\r\n")) return std::nullopt;
    const auto length = request.headers.find("content-length");
    const size_t size = length == request.headers.end() ? 0 : std::strtoul(length->second.c_str(), nullptr, 10);
    while (received_.size() < size) {
      if (!receive()) return std::nullopt;
    }
    request.body = received_.substr(0, size);
    received_.erase(0, size);
    return request;
  }

  bool write(std::string_view bytes) {
    while (!bytes.empty()) {
      const int size = static_cast<int>(std::min<size_t>(bytes.size(), INT_MAX));
      const ssize_t sent =
          ssl_ ? SSL_write(ssl_.get(), bytes.data(), size) : ::write(socket_, bytes.data(), static_cast<size_t>(size));
      if (sent <= 0) return false;
      bytes.remove_prefix(static_cast<size_t>(sent));
    }
    return true;
  }

 private:
  struct SslDeleter {
    void operator()(SSL* ssl) const { SSL_free(ssl); }
  };

  static Request parse(const std::string& head) {
    Request request;
    const size_t space = head.find(' ');
    const size_t secondSpace = head.find(' ', space + 1);
    request.method = head.substr(0, space);
    if (secondSpace != std::string::npos) request.target = head.substr(space + 1, secondSpace - space - 1);
    for (size_t line = head.find("\r\n"); line != std::string::npos; line = head.find("\r\n", line + 2)) {
      const size_t colon = head.find(':', line);
      if (colon == std::string::npos) break;
      std::string name = head.substr(line + 2, colon - line - 2);
      std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::tolower(c); });
      const size_t value = head.find_first_not_of(' ', colon + 1);
      if (value != std::string::npos) request.headers[name] = head.substr(value, head.find("\r\n", colon) - value);
    }
    return request;
  }

  bool receive() {
    char buffer[65536];
    const ssize_t count = ssl_ ? SSL_read(ssl_.get(), buffer, sizeof buffer) : ::read(socket_, buffer, sizeof buffer);
    if (count <= 0) return false;
    received_.append(buffer, static_cast<size_t>(count));
    return true;
  }

  int socket_;
  std::unique_ptr<SSL, SslDeleter> ssl_;
  std::string received_;
};

HttpTestServer::HttpTestServer(Handler handler, Security security) : handler_(std::move(handler)) {
  if (security == Security::kTls) tls_ = makeSelfSignedTlsContext();
  listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  if (bind(listener_, reinterpret_cast<sockaddr*>(&address), length) != 0 || listen(listener_, SOMAXCONN) != 0 ||
      getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
    close(listener_);
    throw std::runtime_error("no port for the test server");
  }
  port_ = ntohs(address.sin_port);
  acceptor_ = std::thread([this] { accept(); });
}

HttpTestServer::~HttpTestServer() {
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
    for (const int socket : sockets_) shutdown(socket, SHUT_RDWR);
    shutdown(listener_, SHUT_RDWR);
  }
  changed_.notify_all();
  acceptor_.join();
  for (std::thread& server : servers_) server.join();
  close(listener_);
}

std::string HttpTestServer::url(const std::string& target) const {
  return (tls_ ? "https://127.0.0.1:" : "http://127.0.0.1:") + std::to_string(port_) + target;
}

size_t HttpTestServer::connections() const {
  const std::lock_guard lock(mutex_);
  return connections_;
}

std::vector<HttpTestServer::Request> HttpTestServer::requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

void HttpTestServer::waitForRequests(size_t count) const {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [&] { return requests_.size() >= count; });
}

void HttpTestServer::release() {
  {
    const std::lock_guard lock(mutex_);
    released_ = true;
  }
  changed_.notify_all();
}

void HttpTestServer::accept() {
  // A client that hangs up early makes a write fail. Blocked here, its signal is so in the threads of the connections.
  sigset_t brokenPipe;
  sigemptyset(&brokenPipe);
  sigaddset(&brokenPipe, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);

  for (int socket; (socket = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC)) >= 0;) {
    const std::lock_guard lock(mutex_);
    ++connections_;
    sockets_.insert(socket);
    if (stopping_) shutdown(socket, SHUT_RDWR);
    servers_.emplace_back([this, socket] { serve(socket); });
  }
}

void HttpTestServer::serve(int socket) {
  {
    Connection connection(socket, tls_.get());
    if (connection.handshake()) {
      while (const std::optional<Request> request = connection.read()) {
        if (!answer(connection, *request)) break;
      }
    }
  }
  const std::lock_guard lock(mutex_);
  sockets_.erase(socket);
  close(socket);
}

/// @return whether the connection may serve another request.
bool HttpTestServer::answer(Connection& connection, const Request& request) {
  {
    const std::lock_guard lock(mutex_);
    requests_.push_back(request);
  }
  changed_.notify_all();

  const Answer answer = handler_(request);
  if (answer.stall) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return released_ || stopping_; });
  }

  std::string bytes = "HTTP/1.1 " + std::to_string(answer.status) + " Scripted\r\n";
  bool hasLength = answer.endless || answer.status == 204;  // neither may announce one
  for (const auto& [name, value] : answer.headers) {
    bytes += name + ": " + value + "\r\n";
    hasLength = hasLength || name == "Content-Length";
  }
  if (!hasLength) bytes += "Content-Length: " + std::to_string(answer.body.size()) + "\r\n";
  bytes += "\r\n" + answer.body;
  if (answer.cutAfter) bytes.resize(std::min(bytes.size(), *answer.cutAfter));

  if (answer.oneByteAtATime) {
    const std::string_view all = bytes;
    for (size_t i = 0; i < all.size(); ++i) {
      if (!connection.write(all.substr(i, 1))) return false;
    }
  } else if (!connection.write(bytes)) {
    return false;
  }
  while (answer.endless && connection.write(answer.body)) {
  }
  return !answer.endless && !answer.cutAfter;
}

#include "ConnectionStream.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/tcp.h>
#include <openssl/err.h>
#include <openssl/ssl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace orvane::demo {
namespace {

// How long a connection without a request is kept, and how long a client may take over the next piece of one.
constexpr int kPatienceInMilliseconds = 60'000;

void readEnd(int (*question)(int, sockaddr*, socklen_t*), int socket, std::string& address, int& port) {
  sockaddr_in end{};
  socklen_t length = sizeof end;
  char text[INET_ADDRSTRLEN] = "";
  if (question(socket, reinterpret_cast<sockaddr*>(&end), &length) != 0) return;
  inet_ntop(AF_INET, &end.sin_addr, text, sizeof text);
  address = text;
  port = ntohs(end.sin_port);
}

}  // namespace

void ConnectionStream::FreeTls::operator()(SSL* tls) const { SSL_free(tls); }

ConnectionStream::ConnectionStream(int socket, SSL_CTX* context, const Signal& stop)
    : socket_(socket), stop_(stop), tls_(context ? SSL_new(context) : nullptr) {
  const int on = 1;
  setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  fcntl(socket_, F_SETFL, O_NONBLOCK);
  if (tls_) SSL_set_fd(tls_.get(), socket_);
}

ConnectionStream::~ConnectionStream() {
  if (tls_ && !abandoned_) {
    ERR_clear_error();
    SSL_shutdown(tls_.get());
  }
  close(socket_);
}

bool ConnectionStream::open() {
  if (!tls_) return true;
  for (;;) {
    ERR_clear_error();
    const int result = SSL_accept(tls_.get());
    if (result == 1) return true;
    if (!waitForTls(result)) {
      abandon();
      return false;
    }
  }
}

bool ConnectionStream::waitForRequest() {
  if (abandoned_ || noMoreRequests_) return false;
  return receivedBegin_ < receivedEnd_ || fill();
}

bool ConnectionStream::fill() {
  const ssize_t count = readSome(received_.data(), received_.size());
  receivedBegin_ = 0;
  receivedEnd_ = count > 0 ? static_cast<size_t>(count) : 0;
  return count > 0;
}

bool ConnectionStream::waitFor(const Signal& release) const {
  pollfd entries[] = {{release.descriptor(), POLLIN, 0}, {stop_.descriptor(), POLLIN, 0}, {socket_, POLLRDHUP, 0}};
  while (poll(entries, std::size(entries), -1) < 0) {
    if (errno != EINTR) return false;
  }
  return entries[0].revents != 0 && entries[1].revents == 0;
}

bool ConnectionStream::is_readable() const { return true; }

bool ConnectionStream::is_writable() const { return !abandoned_ && !stop_.isRaised(); }

ssize_t ConnectionStream::read(char* bytes, size_t size) {
  if (receivedBegin_ == receivedEnd_ && !fill()) return -1;
  const size_t count = std::min(size, receivedEnd_ - receivedBegin_);
  std::memcpy(bytes, received_.data() + receivedBegin_, count);
  receivedBegin_ += count;
  return static_cast<ssize_t>(count);
}

ssize_t ConnectionStream::write(const char* bytes, size_t size) {
  for (size_t done = 0; done < size;) {
    const ssize_t count = abandoned_ ? -1 : writeSome(bytes + done, std::min(size - done, step_));
    if (count <= 0) {
      abandon();
      return -1;
    }
    done += static_cast<size_t>(count);
  }
  return static_cast<ssize_t>(size);
}

void ConnectionStream::get_remote_ip_and_port(std::string& address, int& port) const {
  readEnd(getpeername, socket_, address, port);
}

void ConnectionStream::get_local_ip_and_port(std::string& address, int& port) const {
  readEnd(getsockname, socket_, address, port);
}

bool ConnectionStream::waitForSocket(short events) const {
  pollfd entries[] = {{socket_, events, 0}, {stop_.descriptor(), POLLIN, 0}};
  int count;
  do {
    count = poll(entries, std::size(entries), kPatienceInMilliseconds);
  } while (count < 0 && errno == EINTR);
  return count > 0 && entries[1].revents == 0;
}

bool ConnectionStream::waitForTls(int result) const {
  switch (SSL_get_error(tls_.get(), result)) {
    case SSL_ERROR_WANT_READ:
      return waitForSocket(POLLIN);
    case SSL_ERROR_WANT_WRITE:
      return waitForSocket(POLLOUT);
    default:
      return false;
  }
}

ssize_t ConnectionStream::readSome(char* bytes, size_t size) {
  for (;;) {
    if (tls_) {
      ERR_clear_error();
      size_t count = 0;
      const int result = SSL_read_ex(tls_.get(), bytes, size, &count);
      if (result == 1) return static_cast<ssize_t>(count);
      if (!waitForTls(result)) return -1;
    } else {
      const ssize_t count = recv(socket_, bytes, size, 0);
      if (count >= 0) return count;
      if (errno != EINTR && (errno != EAGAIN || !waitForSocket(POLLIN))) return -1;
    }
  }
}

ssize_t ConnectionStream::writeSome(const char* bytes, size_t size) {
  for (;;) {
    if (tls_) {
      ERR_clear_error();
      size_t count = 0;
      const int result = SSL_write_ex(tls_.get(), bytes, size, &count);
      if (result == 1) return static_cast<ssize_t>(count);
      if (!waitForTls(result)) return -1;
    } else {
      const ssize_t count = send(socket_, bytes, size, MSG_NOSIGNAL);
      if (count >= 0) return count;
      if (errno != EINTR && (errno != EAGAIN || !waitForSocket(POLLOUT))) return -1;
    }
  }
}

}  // namespace orvane::demo

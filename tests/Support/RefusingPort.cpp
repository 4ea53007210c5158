#include "Support/RefusingPort.h"

#include <stdexcept>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

RefusingPort::RefusingPort() : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  if (bind(socket_, reinterpret_cast<sockaddr*>(&address), length) != 0 ||
      getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
    close(socket_);
    throw std::runtime_error("no port to refuse connections");
  }
  port_ = ntohs(address.sin_port);
}

RefusingPort::~RefusingPort() { close(socket_); }

std::string RefusingPort::url(const std::string& target) const {
  return "http://127.0.0.1:" + std::to_string(port_) + target;
}

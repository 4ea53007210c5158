#include "Support/DnsServerOfTest.h"

#include <stdexcept>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "Support/ChildProcess.h"

namespace {

// Starts the server so that it ends with this process, however that ends. It may not change its group for that.
constexpr char kProgram[] = "/usr/bin/setpriv";
constexpr int kAttempts = 20;
constexpr int kPortIsTaken = 2;  // its exit status

sockaddr_in loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

bool hasStarted(ChildProcess& process) {
  for (std::string line = process.line(); !line.empty(); line = process.line()) {
    if (line.find("started, version") != std::string::npos) return true;
  }
  return false;
}

}  // namespace

DnsServerOfTest::DnsServerOfTest(const std::vector<std::string>& records) {
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    // Another program may take the port between here and the server's start; then the next one is tried.
    const int port = SilentDnsServer().port();
    std::vector<std::string> arguments = {"--pdeathsig=KILL",
                                          "/usr/sbin/dnsmasq",
                                          "--no-daemon",
                                          "--conf-file=/dev/null",
                                          "--no-resolv",
                                          "--no-hosts",
                                          "--bind-interfaces",
                                          "--listen-address=127.0.0.1",
                                          "--port=" + std::to_string(port),
                                          "--user=root",
                                          "--group=root",
                                          "--pid-file=",
                                          "--log-facility=/dev/stdout",
                                          "--local=/example.test/"};
    arguments.insert(arguments.end(), records.begin(), records.end());
    auto process = std::make_unique<ChildProcess>(kProgram, arguments);
    if (hasStarted(*process)) {
      process_ = std::move(process);
      address_ = "127.0.0.1:" + std::to_string(port);
      return;
    }
    if (process->end() != kPortIsTaken) throw std::runtime_error(process->errors());
  }
  throw std::runtime_error("no port for a DNS server");
}

DnsServerOfTest::~DnsServerOfTest() = default;

SilentDnsServer::SilentDnsServer() : socket_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address = loopback(0);
  socklen_t length = sizeof address;
  if (bind(socket_, reinterpret_cast<sockaddr*>(&address), length) != 0 ||
      getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
    close(socket_);
    throw std::runtime_error("no port to be silent on");
  }
  port_ = ntohs(address.sin_port);
}

void SilentDnsServer::refuse() {
  // A connected socket takes nothing from others, and the port stays taken.
  sockaddr_in address = loopback(port_);
  connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address);
}

SilentDnsServer::~SilentDnsServer() { close(socket_); }

std::string SilentDnsServer::address() const { return "127.0.0.1:" + std::to_string(port_); }

void SilentDnsServer::waitForQuestion() const {
  char byte;
  recv(socket_, &byte, sizeof byte, 0);
}

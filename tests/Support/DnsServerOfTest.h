#pragma once

#include <memory>
#include <string>
#include <vector>

class ChildProcess;

/// A DNS server (dnsmasq) on a free port of 127.0.0.1 that knows the domain example.test and nothing else. It answers
/// from the end of the constructor on, over UDP and TCP, as long as the thread that made it runs. Its answers come in
/// no particular order.
class DnsServerOfTest {
 public:
  /// @param records rows of its options, "--srv-host=_orvane._tcp.example.test,b1.example.test,443,10,60" (target,
  /// port, priority, weight) or any other.
  /// @throws std::runtime_error if it can't be started.
  explicit DnsServerOfTest(const std::vector<std::string>& records);
  ~DnsServerOfTest();
  DnsServerOfTest(const DnsServerOfTest&) = delete;
  DnsServerOfTest& operator=(const DnsServerOfTest&) = delete;

  /// "127.0.0.1:port".
  const std::string& address() const { return address_; }

 private:
  std::unique_ptr<ChildProcess> process_;
  std::string address_;
};

/// A port of 127.0.0.1 where questions over UDP come in and none is ever answered.
class SilentDnsServer {
 public:
  /// @throws std::runtime_error if there is no port to be had.
  SilentDnsServer();
  ~SilentDnsServer();
  SilentDnsServer(const SilentDnsServer&) = delete;
  SilentDnsServer& operator=(const SilentDnsServer&) = delete;

  /// From now on questions are refused: the sender gets an error at once.
  void refuse();

  int port() const { return port_; }
  /// "127.0.0.1:port".
  std::string address() const;
  /// Waits until a question has come in that no call before this one has told of.
  void waitForQuestion() const;

 private:
  int socket_;
  int port_ = 0;
};

#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include <httplib.h>
#include <openssl/types.h>

#include "Signal.h"

namespace orvane::demo {

/// One accepted connection, with TLS or without, that can be made to misbehave. Every wait ends when `stop` is raised.
/// For the connection's own thread.
class ConnectionStream final : public httplib::Stream {
 public:
  /// Takes over `socket` and closes it in the end. `context` null: no TLS. `stop` must outlive the stream.
  ConnectionStream(int socket, SSL_CTX* context, const Signal& stop);
  ~ConnectionStream() override;
  ConnectionStream(const ConnectionStream&) = delete;
  ConnectionStream& operator=(const ConnectionStream&) = delete;

  /// The TLS handshake, if there is to be one. False if it fails.
  bool open();
  /// False if the client has ended the connection or says nothing for the time that a connection is kept.
  bool waitForRequest();
  /// Waits for `release`. False if the client goes away or the broker stops meanwhile.
  bool waitFor(const Signal& release) const;
  /// Whether each byte is sent for itself from now on.
  void trickle(bool on) { step_ = on ? 1 : SIZE_MAX; }
  /// The connection ends behind the answer in hand.
  void takeNoMoreRequests() { noMoreRequests_ = true; }
  /// From now on nothing is sent: the connection breaks off where it is.
  void abandon() { abandoned_ = true; }

  bool is_readable() const override;
  bool is_writable() const override;
  ssize_t read(char* bytes, size_t size) override;
  ssize_t write(const char* bytes, size_t size) override;
  void get_remote_ip_and_port(std::string& address, int& port) const override;
  void get_local_ip_and_port(std::string& address, int& port) const override;
  socket_t socket() const override { return socket_; }

 private:
  bool waitForSocket(short events) const;
  /// What a TLS call that didn't succeed waits for; false: it has failed for good.
  bool waitForTls(int result) const;
  /// Takes in the next bytes. False at the end of the connection.
  bool fill();
  ssize_t readSome(char* bytes, size_t size);
  ssize_t writeSome(const char* bytes, size_t size);

  struct FreeTls {
    void operator()(SSL* tls) const;
  };

  int socket_;
  const Signal& stop_;
  std::unique_ptr<SSL, FreeTls> tls_;
  size_t step_ = SIZE_MAX;
  bool abandoned_ = false;
  bool noMoreRequests_ = false;
  // The HTTP parser asks for single bytes.
  std::array<char, 16384> received_;
  size_t receivedBegin_ = 0;
  size_t receivedEnd_ = 0;
};

}  // namespace orvane::demo

#pragma once

#include <string>

/// A port of 127.0.0.1 that refuses every connection, and that no other program can take while the object lives.
class RefusingPort {
 public:
  /// @throws std::runtime_error if there is no port to be had.
  RefusingPort();
  ~RefusingPort();
  RefusingPort(const RefusingPort&) = delete;
  RefusingPort& operator=(const RefusingPort&) = delete;

  int port() const { return port_; }
  /// "http://127.0.0.1:port" and `target`.
  std::string url(const std::string& target = "/") const;

 private:
  int socket_;  // bound, but never listening
  int port_ = 0;
};

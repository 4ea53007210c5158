#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "FarmDescription.h"

namespace orvane::demo {

/// A request as the broker received it.
struct RecordedRequest {
  std::string message;  ///< `authenticate`, ..., `brokerinfo`, or empty: a file or something unknown
  std::string method;
  std::string target;  ///< as sent, with the query
  std::vector<std::pair<std::string, std::string>> headers;
  std::string body;
  /// The elements of a message in their order, decoded to UTF-8; nested ones as `connectorinfo/locale`.
  std::vector<std::pair<std::string, std::string>> fields;

  /// The first header or field of this name, or empty. Header names are compared without regard to case.
  std::string header(std::string_view name) const;
  std::string field(std::string_view name) const;
};

/// A connection broker on a loopback port of this machine, for tests, benchmarks and demonstrations.
///
/// It speaks the broker's side of every message, over HTTP or HTTPS, at the root and below any path that ends in
/// "/proxy". Each connection is served on a thread of its own. All functions may be called on any thread; a change acts
/// from the next request on.
class DemoBroker {
 public:
  struct Options {
    bool useTls = false;
    uint16_t port = 0;             ///< 0: any free one
    std::string ip = "127.0.0.1";  ///< or another of 127.0.0.0/8: each has all ports to itself
    /// Host names and addresses in the self-signed certificate that HTTPS makes at start.
    std::vector<std::string> certificateNames = {"localhost", "127.0.0.1"};
    /// Called for each request before it is answered, on the connection's thread; several calls may overlap.
    std::function<void(const RecordedRequest&)> onRequest{};
  };

  /// Listens when it returns. Throws std::runtime_error if the port can't be had or a certificate name is
  /// none.
  DemoBroker(FarmDescription farm, Options options);
  explicit DemoBroker(FarmDescription farm);
  /// Stops.
  ~DemoBroker();
  DemoBroker(const DemoBroker&) = delete;
  DemoBroker& operator=(const DemoBroker&) = delete;

  uint16_t port() const;
  /// `http://ip:port` or `https://...`, without a slash at the end.
  std::string url() const;
  /// The certificate in PEM form; empty without TLS.
  const std::string& certificatePem() const;

  /// Ends all connections at once, stalled ones too, and listens no more. A second call does nothing.
  void stop();

  /// The last 10,000 requests, the oldest first.
  std::vector<RecordedRequest> requests() const;
  /// Those of this message (`authenticate`, `brokerinfo`).
  std::vector<RecordedRequest> requests(std::string_view message) const;
  /// How many connections have been accepted since the start.
  size_t acceptedConnections() const;

  /// All cookies become unknown.
  void expireCookies();

  /// Behind the faults that are there already.
  void addFault(Fault fault);
  void clearFaults();
  /// Lets all requests that stall at this moment go on.
  void releaseStalled();

  /// Changes a copy of the farm, which then takes the farm's place. Cookies stay good, with the groups of their log-in.
  /// Faults are not part of it after the start: use addFault and clearFaults.
  void changeFarm(const std::function<void(FarmDescription&)>& change);

  /// The text that a client is given to exchange `ticket` at this broker.
  std::string ticketString(const std::string& ticket) const;

 private:
  class State;
  std::unique_ptr<State> state_;
};

/// The same for any broker: the ticket, with the address where it is to be exchanged, enciphered.
std::string ticketString(bool useTls, const std::string& host, uint16_t port, const std::string& ticket);

}  // namespace orvane::demo

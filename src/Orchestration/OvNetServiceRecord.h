#pragma once

#include <cstdint>
#include <string>
#include <utility>

/// A broker that a domain's DNS names for the service. Never changes. The port that the DNS gives with it isn't kept:
/// whoever connects to the name finds the port.
class OvNetServiceRecord {
 public:
  OvNetServiceRecord(std::string netServiceName, uint16_t priority, uint16_t weight)
      : _netServiceName(std::move(netServiceName)), _netServicePriority(priority), _netServiceWeight(weight) {}

  /// The host's name, without a dot at its end.
  const std::string& netServiceName() const { return _netServiceName; }
  /// The lower number is to be tried first.
  uint16_t netServicePriority() const { return _netServicePriority; }
  /// Among equal priorities the higher number is to be tried first.
  uint16_t netServiceWeight() const { return _netServiceWeight; }

 private:
  std::string _netServiceName;
  uint16_t _netServicePriority;
  uint16_t _netServiceWeight;
};

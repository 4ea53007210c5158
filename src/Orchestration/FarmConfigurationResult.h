#pragma once

#include <memory>
#include <optional>

#include "Model/OvFarm.h"
#include "OrvaneCommon/OvError.h"

/// What the search for a farm's configuration came to: a farm or an error.
class FarmConfigurationResult {
 public:
  enum Status : int {
    kFromFile = 1,    ///< complete, with locations
    kFromBroker = 2,  ///< its client is set to a broker that has a configuration; the connect fetches that
  };

  static FarmConfigurationResult resultWithFarm(std::shared_ptr<OvFarm> farm, Status status, bool farmExists) {
    return {std::move(farm), farmExists, status, std::nullopt};
  }
  static FarmConfigurationResult resultWithError(const OvError& error) { return {nullptr, false, 0, error}; }

  const std::shared_ptr<OvFarm>& configuredFarm() const { return _configuredFarm; }  ///< null on failure
  bool farmAlreadyExists() const { return _farmAlreadyExists; }                      ///< it is one of the store's
  int farmConfigurationStatus() const { return _farmConfigurationStatus; }           ///< 0 on failure
  const std::optional<OvError>& error() const { return _error; }

 private:
  FarmConfigurationResult(std::shared_ptr<OvFarm> farm, bool farmAlreadyExists, int status,
                          std::optional<OvError> error)
      : _configuredFarm(std::move(farm)),
        _farmAlreadyExists(farmAlreadyExists),
        _farmConfigurationStatus(status),
        _error(std::move(error)) {}

  std::shared_ptr<OvFarm> _configuredFarm;
  bool _farmAlreadyExists = false;
  int _farmConfigurationStatus = 0;
  std::optional<OvError> _error;
};

#pragma once

#include "OrvaneCommon/OvError.h"

/// The controller's own errors. They share OvError with the broker's and the protocol layer's codes, which pass through
/// as they are.
enum class BrokerControllerError : int {
  kNone = 0,
  kCancelled = 1,
  kInstallsUpdate = 2,        ///< the user chose to install an update
  kRefusedUpdate = 3,         ///< the user refused one
  kConfigurationInvalid = 4,  ///< a configuration file was fetched and isn't one
  kConfigurationNotFound = 5,
  kConfigurationUnobtainable = 6,  ///< the one that the broker wants could not be had
  kConfigurationNotAssigned = 7,   ///< there is none for this user
  kNoLocationSelected = 8,
  kLaunchFileUnreadable = 9,
  kSessionProgramNotFound = 10,
  kNoConnectorInformation = 11,
  kNoBrokers = 12,  ///< the location has none
  kInvalidUrl = 13,
  kApplicationList = 14,
};

/// The error with its text in the user's language; no text for the first three.
OvError getErrorForBrokerControllerErrorCode(int code);
inline OvError getErrorForBrokerControllerErrorCode(BrokerControllerError code) {
  return getErrorForBrokerControllerErrorCode(static_cast<int>(code));
}

/// Stores it in `*error`, unless that is null. A code above 14 clears it.
void configureError(OvError* error, int brokerControllerErrorCode);
inline void configureError(OvError* error, BrokerControllerError code) {
  configureError(error, static_cast<int>(code));
}

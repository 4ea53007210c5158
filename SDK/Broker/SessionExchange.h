#pragma once

#include <functional>

#include "Broker/OvBrokerClient.h"
#include "Broker/RequestDocument.h"
#include "Broker/ResponseFields.h"

/// A message that carries the cookie of a log-in, as OvBrokerClient::run takes it.
struct OvBrokerClient::SessionExchange {
  const char* message;    ///< `getsessionlist` for `getsessionlist-req` and `getsessionlist-rsp`
  const char* operation;  ///< the client's operation, for the log
  /// False for a message that may go out without a log-in if the broker allows it.
  bool alwaysAuthenticated = true;
  /// Adds what the request holds behind the cookie.
  std::function<void(orvane::RequestDocument&)> describe = [](orvane::RequestDocument&) {};
  /// Takes the answer, which is free of errors.
  std::function<void(const orvane::ResponseFields&)> deliver;
};

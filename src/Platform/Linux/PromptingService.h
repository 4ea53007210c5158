#pragma once

#include <mutex>

#include <libsecret/secret.h>

#include "Platform/Linux/GlibCall.h"
#include "Platform/Linux/SecretService.h"

namespace orvane {

/// The process's connection to the session bus, made when first needed and held as long as the object lives: a service
/// from which a client goes while its question to the user stands is left in disorder.
class SessionBus {
 public:
  /// Makes the connection, anew if it was lost. Any thread.
  /// @throws GlibFailure when there is no bus.
  void connect(GlibCall& call);

 private:
  std::mutex mutex_;
  Reference<GDBusConnection> connection_;
};

/// Connects to the Secret Service for the operations of one call. Those that have the user asked give the call the time
/// for a prompt while the question stands, and the one for the service again once it is answered.
/// @param call  outlives the connection.
/// @throws GlibFailure when there is no session bus, or no service on it that answers in time.
Reference<::SecretService> connectToSecretService(SessionBus& bus, GlibCall& call, const SecretService::Bounds& bounds);

}  // namespace orvane

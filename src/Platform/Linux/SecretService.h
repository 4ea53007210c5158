#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <span>
#include <stop_token>
#include <string>

#include "Platform/SecretStore.h"

namespace orvane {

class SessionBus;

/// The secret store of the desktop: the default collection of the Secret Service on the session bus.
///
/// An item's attributes are "service" and "account", its content the bytes as they are. A collection that is locked is
/// unlocked by the user, whom the desktop asks when an item is written, or read that is known to be there; never for an
/// item that may not exist. The first item written makes the collection if there is none, the user choosing its
/// password. Where the user declines, or nobody answers in time, the call fails: nothing is stored anywhere else.
///
/// Nothing is remembered of the service from one call to the next, so one that was restarted is used again. A question
/// that a call no longer waits for stays with the user; its answer serves the calls that follow.
class SecretService : public SecretStore {
 public:
  /// How long the service may take over a call: without the user, and when the user is asked, for the answer.
  struct Bounds {
    std::chrono::milliseconds service{std::chrono::seconds(10)};
    std::chrono::milliseconds prompt{std::chrono::minutes(2)};
  };

  SecretService() : SecretService(Bounds()) {}
  explicit SecretService(Bounds bounds);

  /// A locked collection that can't be seen to hold the item makes it unreadable; no collection at all, absent.
  Item load(const std::string& service, const std::string& account) override;
  bool save(const std::string& service, const std::string& account, std::span<const uint8_t> bytes) override;

  /// Ends all calls that wait, for the service or for the user, and every later one at once: for the program's end. A
  /// question that stands is left to the desktop. On any thread, the main one too: it doesn't wait.
  void cancelAll() { stop_.request_stop(); }

 private:
  const Bounds bounds_;
  const std::shared_ptr<SessionBus> bus_;
  std::stop_source stop_;
};

}  // namespace orvane

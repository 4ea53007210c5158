#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace orvane {

/// Where the desktop keeps the user's secrets: one item of bytes for each service and account.
///
/// All calls may be made on any thread but the main one, several at a time: they wait for another process, up to the
/// store's deadline, and may make the desktop ask the user to unlock the store, which takes as long as the user does.
/// None throws; why something failed stands in the log, never with a secret.
class SecretStore {
 public:
  enum class Reading {
    kFound,
    kAbsent,      ///< the store was open to be read, and there is no such item
    kUnreadable,  ///< no store, a locked one, or one that doesn't answer: there may be an item
  };
  struct Item {
    Reading reading = Reading::kUnreadable;
    std::vector<uint8_t> bytes{};  ///< empty unless found
  };

  virtual ~SecretStore() = default;

  virtual Item load(const std::string& service, const std::string& account) = 0;
  /// Adds the item, or replaces the bytes of the one there is. @return whether it is in the store now.
  virtual bool save(const std::string& service, const std::string& account, std::span<const uint8_t> bytes) = 0;
};

}  // namespace orvane

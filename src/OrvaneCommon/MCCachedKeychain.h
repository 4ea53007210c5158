#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <span>
#include <string>

#include "Platform/SecretStore.h"

/// What the application keeps in the secret store, held in memory so that the store, and the user who may have to
/// unlock it, is asked once for a reading and not at all for writing what it holds already.
///
/// Nobody else is expected to change the items while the object lives. All operations may be called on any thread but
/// the main one: they may wait for the store, and for another thread's call that does. What is held is wiped when it is
/// replaced and when the object goes.
class MCCachedKeychain {
 public:
  /// @param store  shared with whoever ends its calls at quit; not null.
  explicit MCCachedKeychain(std::shared_ptr<orvane::SecretStore> store);
  ~MCCachedKeychain();
  MCCachedKeychain(const MCCachedKeychain&) = delete;
  MCCachedKeychain& operator=(const MCCachedKeychain&) = delete;

  /// Keeps the data for the key and writes it, unless the store is known to hold it. Data that couldn't be written is
  /// kept too, and written at the next call with it. A key that is known to have no item needs none for empty data. An
  /// empty key does nothing.
  /// @return whether the store holds the data.
  bool saveData(std::span<const uint8_t> data, const std::string& key);

  /// What is kept for the key, else what the store says, which is kept from now on if it has the item. Of one that is
  /// absent or unreadable the store is asked again at the next call: a store may show nothing until its user opens it.
  /// The bytes are the caller's to wipe. An empty key is absent.
  orvane::SecretStore::Item loadDataForKey(const std::string& key);

 private:
  struct Entry {
    orvane::SecretStore::Item item{};  // found or absent
    bool isStored = false;
  };

  const std::shared_ptr<orvane::SecretStore> _store;
  // Held over the store's calls, so that the last data kept is the last one written.
  std::mutex _mutex;
  std::map<std::string, Entry> _entries;
};

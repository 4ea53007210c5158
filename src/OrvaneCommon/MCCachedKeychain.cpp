#include "OrvaneCommon/MCCachedKeychain.h"

#include <algorithm>
#include <utility>

#include "OrvaneCommon/MCKeychain.h"
#include "Support/SecureMemory.h"

using orvane::SecretStore;

MCCachedKeychain::MCCachedKeychain(std::shared_ptr<SecretStore> store) : _store(std::move(store)) {}

MCCachedKeychain::~MCCachedKeychain() {
  for (auto& [key, entry] : _entries) orvane::wipe(entry.item.bytes);
}

bool MCCachedKeychain::saveData(std::span<const uint8_t> data, const std::string& key) {
  if (key.empty()) return false;
  const std::lock_guard lock(_mutex);
  const auto [position, isNew] = _entries.try_emplace(key);
  Entry& entry = position->second;
  if (entry.isStored && std::ranges::equal(entry.item.bytes, data)) return true;
  orvane::wipe(entry.item.bytes);
  // A buffer of exactly this size: growing would leave copies behind.
  entry.item = {SecretStore::Reading::kFound, {data.begin(), data.end()}};
  entry.isStored = MCSaveIntoKeyChain(*_store, key, data);
  return entry.isStored;
}

SecretStore::Item MCCachedKeychain::loadDataForKey(const std::string& key) {
  const std::lock_guard lock(_mutex);
  const auto found = _entries.find(key);
  if (found != _entries.end() && found->second.item.reading == SecretStore::Reading::kFound) return found->second.item;
  SecretStore::Item item = MCLoadFromKeychain(*_store, key);
  if (item.reading != SecretStore::Reading::kUnreadable) _entries[key] = {item, true};
  return item;
}

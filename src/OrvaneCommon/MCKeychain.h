#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "Platform/SecretStore.h"

/// @file
/// The application's items in the secret store: service "Orvane", the key as account. An empty key names no item.
///
/// To be called as the store's own operations: not on the main thread, and with patience.

/// Looks the key's item up. The bytes are the caller's to wipe. An empty key is absent, without asking the store.
orvane::SecretStore::Item MCLoadFromKeychain(orvane::SecretStore& store, const std::string& key);

/// Adds the key's item or replaces its data, which may be empty. A failure is logged. An empty key does nothing.
/// @return whether the data is in the store now.
bool MCSaveIntoKeyChain(orvane::SecretStore& store, const std::string& key, std::span<const uint8_t> data);

#include "OrvaneCommon/MCKeychain.h"

#include "Support/OvWriteLog.h"

using orvane::SecretStore;

namespace {

constexpr char kService[] = "Orvane";
// The store tells no codes of its own: this one says that it failed.
constexpr int kFailed = 1;

}  // namespace

SecretStore::Item MCLoadFromKeychain(SecretStore& store, const std::string& key) {
  if (key.empty()) return {SecretStore::Reading::kAbsent};
  return store.load(kService, key);
}

bool MCSaveIntoKeyChain(SecretStore& store, const std::string& key, std::span<const uint8_t> data) {
  if (key.empty()) return false;
  if (store.save(kService, key, data)) return true;
  OvWriteLog(2, "%s: error occurred (error code = %d)", __func__, kFailed);
  return false;
}

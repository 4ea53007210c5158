#include "Model/FarmPasswords.h"

#include <algorithm>
#include <limits>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

#include "Platform/KeyedArchive.h"
#include "Support/OvWriteLog.h"
#include "Support/SecureMemory.h"

namespace orvane {

namespace {

constexpr const char* kItem = "passwordKeyForKeyChain";
constexpr const char* kSetAsideItem = "passwordKeyForKeyChain.unreadable";

// The names of the farms of the list that the item was written with: which index is whose, if the list's file was
// written again and the item could not be. No farm's key is without a colon.
constexpr const char* kNames = "farmNames";

std::string keyOf(const std::string& whose, const std::string& username, const std::string& domain) {
  return whose + ":" + username + ":" + domain;
}

}  // namespace

FarmPasswords::FarmPasswords(std::shared_ptr<const OvFarmList> farms, std::shared_ptr<MCCachedKeychain> keychain,
                             std::shared_ptr<SerialQueue> storeQueue, std::shared_ptr<MainQueue> mainQueue)
    : farms_(std::move(farms)),
      keychain_(std::move(keychain)),
      storeQueue_(std::move(storeQueue)),
      mainQueue_(std::move(mainQueue)) {}

std::string FarmPasswords::keyByIndex(size_t index, const OvFarm& farm) {
  return keyOf(std::to_string(index), farm.credentials().username(), farm.credentials().domain());
}

std::string FarmPasswords::keyByName(const OvFarm& farm) {
  return keyOf(farm.name(), farm.credentials().username(), farm.credentials().domain());
}

void FarmPasswords::listWasLoaded() {
  isRead_ = false;
  expected_.clear();
  for (const auto& farm : *farms_) {
    expected_.push_back({farm, farm->name(), farm->credentials().username(), farm->credentials().domain()});
  }
}

void FarmPasswords::load(bool isListComplete, Work done) {
  if (!isListComplete) isListComplete_ = false;
  read(std::move(done));
}

void FarmPasswords::save(Work done) {
  // An item that was absent may have come: some stores show nothing until their user opens them.
  if (isRead_ && (hasItem_ || !hasPasswords())) return write(std::move(done));
  isRead_ = false;
  read([self = shared_from_this(), done = std::move(done)] {
    if (self->isRead_) return self->write(done);
    OvWriteLog(2, "%s: the secret store can't be read, no password is saved", "savePasswordsIntoKeychain");
    if (done) done();
  });
}

void FarmPasswords::read(Work done) {
  storeQueue_->post([self = shared_from_this(), done = std::move(done)]() mutable {
    SecretStore::Item item = self->keychain_->loadDataForKey(kItem);
    const auto bytes = std::make_shared<const SecretBytes>(std::move(item.bytes));
    // Handed over, not copied: farms and callers' objects mustn't go on this thread.
    const std::shared_ptr<MainQueue> mainQueue = self->mainQueue_;
    mainQueue->post([self = std::move(self), reading = item.reading, bytes, done = std::move(done)] {
      self->take(reading, bytes);
      if (done) done();
    });
  });
}

void FarmPasswords::take(SecretStore::Reading reading, const std::shared_ptr<const SecretBytes>& bytes) {
  if (reading == SecretStore::Reading::kUnreadable) return;
  isRead_ = true;
  if (reading == SecretStore::Reading::kAbsent) return;
  hasItem_ = true;
  if (!bytes->bytes.empty() && (!giveToFarms(bytes->bytes) || !isListComplete_)) setAside_ = bytes;
  isListComplete_ = true;
  expected_.clear();
}

bool FarmPasswords::giveToFarms(const std::vector<uint8_t>& archive) {
  try {
    const KeyedObject passwords = openKeyedArchive(archive);
    const std::vector<size_t> indexes = indexesIn(passwords.strings(kNames).value_or(std::vector<std::string>()));
    for (size_t number = 0; number < expected_.size(); ++number) {
      const Expected& expected = expected_[number];
      const std::shared_ptr<OvFarm> farm = expected.farm.lock();
      if (!farm) continue;
      OvCredentials& credentials = farm->credentials();
      const bool isForThisUser = credentials.username() == expected.username && credentials.domain() == expected.domain;
      if (!isForThisUser || !credentials.password().empty()) continue;
      const auto stored = [&](const std::string& whose) {
        return passwords.string(keyOf(whose, expected.username, expected.domain));
      };
      std::optional<std::string> password = stored(std::to_string(indexes[number]));
      if (!password) password = stored(expected.name);
      if (!password) continue;
      const WipeAtEnd wiping(*password);
      credentials.setPassword(*password);
    }
  } catch (const KeyedArchiveError& error) {
    OvWriteLog(2, "%s: the saved passwords can't be understood: %s", "loadPasswordsFromKeychain", error.what());
    return false;
  }
  return true;
}

std::vector<size_t> FarmPasswords::indexesIn(const std::vector<std::string>& storedNames) const {
  constexpr size_t kNowhere = std::numeric_limits<size_t>::max();
  std::vector<size_t> indexes(expected_.size(), kNowhere);
  std::vector<bool> isTaken(storedNames.size());
  const auto take = [&](size_t number, size_t index) {
    indexes[number] = index;
    isTaken[index] = true;
  };
  for (size_t number = 0; number < std::min(indexes.size(), storedNames.size()); ++number) {
    if (storedNames[number] == expected_[number].name) take(number, number);
  }
  std::multimap<std::string_view, size_t> moved;
  for (size_t index = 0; index < storedNames.size(); ++index) {
    if (!isTaken[index]) moved.emplace(storedNames[index], index);
  }
  for (size_t number = 0; number < indexes.size(); ++number) {
    if (indexes[number] != kNowhere) continue;
    if (const auto found = moved.find(expected_[number].name); found != moved.end()) {
      take(number, found->second);
      moved.erase(found);
    }
  }
  // Renamed, or an item that names nobody.
  for (size_t number = 0; number < indexes.size(); ++number) {
    if (indexes[number] == kNowhere && (storedNames.empty() || (number < isTaken.size() && !isTaken[number]))) {
      indexes[number] = number;
    }
  }
  return indexes;
}

bool FarmPasswords::hasPasswords() const {
  return std::ranges::any_of(*farms_, [](const auto& farm) { return farm->credentials().needToSave(); });
}

void FarmPasswords::write(Work done) {
  // Nobody is asked to unlock a store for nothing.
  if (!hasPasswords() && !hasItem_) {
    if (done) done();
    return;
  }
  KeyedArchiver archiver;
  std::vector<std::string> names;
  for (size_t index = 0; index < farms_->size(); ++index) {
    const OvFarm& farm = *(*farms_)[index];
    names.push_back(farm.name());
    if (!farm.credentials().needToSave()) continue;
    archiver.encodeString(keyByIndex(index, farm), farm.credentials().password().text());
  }
  hasItem_ = true;
  archiver.encodeStrings(kNames, names);
  const auto bytes = std::make_shared<const SecretBytes>(archiver.finish());
  storeQueue_->post([self = shared_from_this(), bytes, setAside = setAside_, done = std::move(done)]() mutable {
    if (!setAside || self->keepBeside(setAside->bytes)) self->keychain_->saveData(bytes->bytes, kItem);
    const std::shared_ptr<MainQueue> mainQueue = self->mainQueue_;
    mainQueue->post([self = std::move(self), done = std::move(done)] {
      if (done) done();
    });
  });
}

bool FarmPasswords::keepBeside(const std::vector<uint8_t>& bytes) const {
  std::string name = kSetAsideItem;
  for (int number = 2;; ++number) {
    SecretStore::Item there = keychain_->loadDataForKey(name);
    const WipeAtEnd wiping(there.bytes);
    if (there.reading == SecretStore::Reading::kUnreadable) return false;
    const bool isTaken = there.reading == SecretStore::Reading::kFound && there.bytes != bytes;
    if (!isTaken) return keychain_->saveData(bytes, name);
    name = std::string(kSetAsideItem) + "-" + std::to_string(number);
  }
}

}  // namespace orvane

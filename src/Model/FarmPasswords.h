#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Model/OvFarm.h"
#include "OrvaneCommon/MCCachedKeychain.h"
#include "Platform/Queues.h"
#include "Support/SecureMemory.h"

using OvFarmList = std::vector<std::shared_ptr<OvFarm>>;

namespace orvane {

/// Keeps the passwords of a list of farms as one item of the secret store (docs/farm-store.md).
///
/// A store that can't be read now, as it is locked, absent or slow, may hold passwords: it is not written before it has
/// been read, and what it held then goes to the farms first. Nor is it where it showed no item, without another look. A
/// password that the user gave meanwhile stays.
///
/// Belongs to the main thread; the store is asked on a queue of its own, so that nobody waits for it.
class FarmPasswords : public std::enable_shared_from_this<FarmPasswords> {
 public:
  /// @param farms  the list whose passwords these are, as its owner changes it.
  /// @param storeQueue  where the store is asked: never the main queue but in tests.
  FarmPasswords(std::shared_ptr<const OvFarmList> farms, std::shared_ptr<MCCachedKeychain> keychain,
                std::shared_ptr<SerialQueue> storeQueue, std::shared_ptr<MainQueue> mainQueue);

  /// To be called when the list comes from an archive: the store has these farms' passwords under the keys that the
  /// farms have now, however the list changes before the store can be read.
  void listWasLoaded();

  /// Gives the farms of the loaded list the passwords that the store has for them. `done` is called on the main thread
  /// when that is settled, whether the store could be read or not.
  /// @param isListComplete  false if the list may lack farms that have passwords in the store: these are then kept in
  ///                        an item beside before the store is written.
  void load(bool isListComplete, Work done);

  /// Writes the passwords of the farms that want theirs saved. `done` is called on the main thread when that is
  /// settled; the text of what failed is in the log.
  void save(Work done);

  /// The key of a farm's password in the item, and the one that earlier versions used.
  static std::string keyByIndex(size_t index, const OvFarm& farm);
  static std::string keyByName(const OvFarm& farm);

 private:
  // For whom the store may have a password: a farm as it was when the list was loaded, at its index in the list.
  struct Expected {
    std::weak_ptr<OvFarm> farm;
    std::string name;
    std::string username;
    std::string domain;
  };

  // Bytes on their way between the threads, wiped when nobody needs them any more.
  struct SecretBytes {
    explicit SecretBytes(std::vector<uint8_t> content) : bytes(std::move(content)) {}
    ~SecretBytes() { wipe(bytes); }
    SecretBytes(const SecretBytes&) = delete;
    SecretBytes& operator=(const SecretBytes&) = delete;

    std::vector<uint8_t> bytes;
  };

  void read(Work done);
  void take(SecretStore::Reading reading, const std::shared_ptr<const SecretBytes>& bytes);
  // False if the bytes are no archive.
  bool giveToFarms(const std::vector<uint8_t>& archive);
  // By which index the item knows each expected farm; its own if the item names none or doesn't know it.
  std::vector<size_t> indexesIn(const std::vector<std::string>& storedNames) const;
  // Whether any farm wants its password saved.
  bool hasPasswords() const;
  void write(Work done);
  // Keeps the bytes in an item that holds nothing else yet. On the store's queue. False if that can't be had.
  bool keepBeside(const std::vector<uint8_t>& bytes) const;

  const std::shared_ptr<const OvFarmList> farms_;
  const std::shared_ptr<MCCachedKeychain> keychain_;
  const std::shared_ptr<SerialQueue> storeQueue_;
  const std::shared_ptr<MainQueue> mainQueue_;
  std::vector<Expected> expected_;
  std::shared_ptr<const SecretBytes> setAside_;  // an item that must not be overwritten without a copy, or null
  bool isListComplete_ = true;
  bool isRead_ = false;
  bool hasItem_ = false;  // in the store, as far as is known
};

}  // namespace orvane

#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "Model/FarmPasswords.h"
#include "Model/OvFarm.h"
#include "Model/OvFarmManagerObserver.h"

/// The folder of the farm store in the user's data home, made with its parents if needed; and the store in it.
std::string MCGetDataFolderPath();
std::string MCGetDataFilePath();

/// The user's farms and their store: a file (docs/farm-store.md) with all but the passwords, which are in the desktop's
/// secret store.
///
/// Belongs to the main thread, and so do the farms' configurations. Changes to a farm reach the disk when somebody
/// calls save().
class OvFarmManager {
 public:
  /// An archive with more farms than this is refused.
  static constexpr size_t kMaximumFarms = 50'000;

  /// An empty list.
  /// @param filePath  of the store; its folder must exist by the first save.
  /// @param storeQueue  where the secret store is asked, as it may keep its caller waiting.
  OvFarmManager(std::string filePath, std::shared_ptr<MCCachedKeychain> keychain,
                std::shared_ptr<orvane::SerialQueue> storeQueue, std::shared_ptr<orvane::MainQueue> mainQueue);

  const OvFarmList& farms() const { return *_farmList; }

  /// Appends the farm, unless one of the list is equal to it.
  void addFarm(const std::shared_ptr<OvFarm>& farm);
  /// Removes every farm equal to it.
  void removeFarm(const std::shared_ptr<OvFarm>& farm);
  void removeAllFarms();
  /// By value: a copy that differs in any field is not contained.
  bool containsFarm(const OvFarm& farm) const;
  /// The first farm with this `farmDBGUID`, or null.
  std::shared_ptr<OvFarm> findFarmWithGUID(const std::string& guid) const;

  /// The farm to connect when the program starts: the only one, else the first with the flag, else null.
  std::shared_ptr<OvFarm> autolaunchedFarm() const;
  /// Leaves the flag to `farm` alone, as it has it: set the farm's flag first. Does nothing for a farm that is not in
  /// the list.
  void setAutolaunchedFarm(const std::shared_ptr<OvFarm>& farm);

  /// Writes the file in one step, and has the passwords written. What fails is in the log; the file is then as it was,
  /// and the next save tries again. A file that could not be understood is set aside first, as ".unreadable", and if
  /// that fails is not overwritten.
  /// @param passwordsAreSettled  called on the main thread when the secret store has them, or could not take them.
  void save(orvane::Work passwordsAreSettled = {});
  /// The file's bytes.
  std::vector<uint8_t> saveToData() const;

  /// Reads the file, and has the passwords read.
  void load(orvane::Work passwordsAreSettled = {});
  /// Takes the list of an archive. One that can't be understood leaves the list as it is, with a line in the log.
  /// @return whether the archive had a list.
  bool loadFromData(std::span<const uint8_t> data);

  /// The two halves of save and load that are about passwords. A secret store that could not be read is read again
  /// before it is written, and at each call of loadPasswordsFromKeychain.
  void savePasswordsIntoKeychain(orvane::Work done = {});
  void loadPasswordsFromKeychain(orvane::Work done = {});
  static std::string keyForPasswordByFarmName(const OvFarm& farm);
  /// Empty for a farm that is not in the list.
  std::string keyForPasswordByFarmIndex(const OvFarm& farm) const;

  /// The classes' names in files of earlier versions, and what they are called now.
  static const std::map<std::string, std::string>& setupUnarchieverForBackwardCompatibility();

  /// Tells the observers that the farm changed.
  void notifyOnFarmChange(const std::shared_ptr<OvFarm>& farm);
  /// Observers are held weakly and told in the order of adding. They may add and remove observers while being told: who
  /// is removed is not told any more, who is added not yet.
  void addFarmObserver(const std::shared_ptr<OvFarmManagerObserver>& observer);
  void removeFarmObserver(const std::shared_ptr<OvFarmManagerObserver>& observer);
  void notifyObserversOnFarmChange(const std::shared_ptr<OvFarm>& farm, FarmChange state);

 private:
  bool setUnreadableFileAside();

  const std::string _filePath;
  std::vector<std::weak_ptr<OvFarmManagerObserver>> _farmManagerObservers;
  const std::shared_ptr<OvFarmList> _farmList;
  const std::shared_ptr<orvane::FarmPasswords> _passwords;
  bool _fileIsUnreadable = false;
};

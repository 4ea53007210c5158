#include "Model/OvFarmManager.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <limits>
#include <system_error>
#include <utility>

#include <fcntl.h>

#include "Platform/KeyedArchive.h"
#include "Platform/UserFolders.h"
#include "Support/FileReplacement.h"
#include "Support/OvWriteLog.h"

namespace {

constexpr const char* kRoot = "root";
constexpr const char* kConnections = "m_connections";
constexpr const char* kAutolaunchedFarmIndex = "m_autolaunchedFarmIndex";
constexpr uint32_t kNoFarm = std::numeric_limits<uint32_t>::max();

auto isEqualTo(const OvFarm& farm) {
  return [&farm](const std::shared_ptr<OvFarm>& candidate) { return *candidate == farm; };
}

}  // namespace

std::string MCGetDataFolderPath() { return orvane::dataFolder("Brindle Software/Orvane AppGate"); }

std::string MCGetDataFilePath() { return MCGetDataFolderPath() + "/settings_2.plist"; }

OvFarmManager::OvFarmManager(std::string filePath, std::shared_ptr<MCCachedKeychain> keychain,
                             std::shared_ptr<orvane::SerialQueue> storeQueue,
                             std::shared_ptr<orvane::MainQueue> mainQueue)
    : _filePath(std::move(filePath)),
      _farmList(std::make_shared<OvFarmList>()),
      _passwords(std::make_shared<orvane::FarmPasswords>(_farmList, std::move(keychain), std::move(storeQueue),
                                                         std::move(mainQueue))) {}

void OvFarmManager::addFarm(const std::shared_ptr<OvFarm>& farm) {
  if (containsFarm(*farm)) return;
  _farmList->push_back(farm);
  notifyObserversOnFarmChange(farm, FarmChange::kAdded);
}

void OvFarmManager::removeFarm(const std::shared_ptr<OvFarm>& farm) {
  const std::shared_ptr<OvFarm> removed = farm;  // the argument may be the list's own pointer
  std::erase_if(*_farmList, isEqualTo(*removed));
  notifyObserversOnFarmChange(removed, FarmChange::kRemoved);
}

void OvFarmManager::removeAllFarms() {
  _farmList->clear();
  notifyObserversOnFarmChange(nullptr, FarmChange::kAllRemoved);
}

bool OvFarmManager::containsFarm(const OvFarm& farm) const { return std::ranges::any_of(farms(), isEqualTo(farm)); }

std::shared_ptr<OvFarm> OvFarmManager::findFarmWithGUID(const std::string& guid) const {
  const auto place = std::ranges::find_if(farms(), [&](const auto& farm) { return farm->farmDBGUID() == guid; });
  return place == farms().end() ? nullptr : *place;
}

std::shared_ptr<OvFarm> OvFarmManager::autolaunchedFarm() const {
  if (farms().size() == 1) return farms().front();
  const auto place = std::ranges::find_if(farms(), [](const auto& farm) { return farm->doAutoLaunch(); });
  return place == farms().end() ? nullptr : *place;
}

void OvFarmManager::setAutolaunchedFarm(const std::shared_ptr<OvFarm>& farm) {
  if (!farm || !containsFarm(*farm)) return;
  const bool isAutolaunched = farm->doAutoLaunch();
  for (const auto& each : farms()) each->setDoAutoLaunch(false);
  farm->setDoAutoLaunch(isAutolaunched);
}

void OvFarmManager::save(orvane::Work passwordsAreSettled) {
  const std::vector<uint8_t> data = saveToData();
  if (!setUnreadableFileAside() || !orvane::replaceFile(_filePath, data.data(), data.size())) {
    OvWriteLog(2, "%s: Cannot write %s: %s", __func__, _filePath.c_str(), strerror(errno));
  }
  savePasswordsIntoKeychain(std::move(passwordsAreSettled));
  notifyObserversOnFarmChange(nullptr, FarmChange::kSaved);
}

std::vector<uint8_t> OvFarmManager::saveToData() const {
  const auto autolaunched = std::ranges::find(farms(), autolaunchedFarm());
  const uint64_t autolaunchedIndex =
      autolaunched == farms().end() ? kNoFarm : static_cast<uint64_t>(autolaunched - farms().begin());
  orvane::KeyedArchiver archiver;
  archiver.encodeDictionary(kRoot, [&](orvane::KeyedArchiver& root) {
    root.encodeObjects(kConnections, OvFarm::kArchiveClass, farms().size(),
                       [&](orvane::KeyedArchiver& fields, size_t index) { farms()[index]->encodeWithCoder(fields); });
    root.encodeNumber(kAutolaunchedFarmIndex, autolaunchedIndex);
  });
  OvWriteLog(4, "%s: Saved %d farms.", __func__, static_cast<int>(farms().size()));
  return archiver.finish();
}

void OvFarmManager::load(orvane::Work passwordsAreSettled) {
  std::error_code error;
  const auto data = orvane::readFile(_filePath);
  const bool isThere =
      data || std::filesystem::symlink_status(_filePath, error).type() != std::filesystem::file_type::not_found;
  if (!data) {
    OvWriteLog(4, "%s: Farms data is NULL. File: %s", __func__, _filePath.c_str());
    _fileIsUnreadable = isThere;
  } else {
    _fileIsUnreadable = !loadFromData({reinterpret_cast<const uint8_t*>(data->data()), data->size()});
  }
  OvWriteLog(4, "%s: Loaded %d farms.", __func__, static_cast<int>(farms().size()));
  _passwords->load(!_fileIsUnreadable, std::move(passwordsAreSettled));
}

bool OvFarmManager::loadFromData(std::span<const uint8_t> data) {
  try {
    const orvane::KeyedObject archive = orvane::openKeyedArchive(data, setupUnarchieverForBackwardCompatibility());
    const auto root = archive.dictionary(kRoot);
    const auto connections = root ? root->objects(kConnections, OvFarm::kArchiveClass) : std::nullopt;
    if (!connections) return false;
    if (connections->size() > kMaximumFarms) throw orvane::KeyedArchiveError("too many farms");
    OvFarmList farms;
    for (const orvane::KeyedObject& fields : *connections) farms.push_back(std::make_shared<OvFarm>(fields));
    *_farmList = std::move(farms);
    _passwords->listWasLoaded();
    return true;
  } catch (const orvane::KeyedArchiveError& error) {
    OvWriteLog(2, "%s: Cannot unarchive farms data.", __func__);
    OvWriteLog(2, "%s: %s", __func__, error.what());
    return false;
  }
}

void OvFarmManager::savePasswordsIntoKeychain(orvane::Work done) { _passwords->save(std::move(done)); }

void OvFarmManager::loadPasswordsFromKeychain(orvane::Work done) {
  _passwords->load(!_fileIsUnreadable, std::move(done));
}

std::string OvFarmManager::keyForPasswordByFarmName(const OvFarm& farm) {
  return orvane::FarmPasswords::keyByName(farm);
}

std::string OvFarmManager::keyForPasswordByFarmIndex(const OvFarm& farm) const {
  const auto place = std::ranges::find_if(farms(), isEqualTo(farm));
  if (place == farms().end()) return "";
  return orvane::FarmPasswords::keyByIndex(static_cast<size_t>(place - farms().begin()), farm);
}

const std::map<std::string, std::string>& OvFarmManager::setupUnarchieverForBackwardCompatibility() {
  static const std::map<std::string, std::string> names = {
      {"MCFarm", "OvFarm"},       {"MCLocation", "OvLocation"},   {"MCCredentials", "OvCredentials"},
      {"MCDisplay", "OvDisplay"}, {"MCResources", "OvResources"}, {"MCPerformance", "OvPerformance"},
  };
  return names;
}

void OvFarmManager::notifyOnFarmChange(const std::shared_ptr<OvFarm>& farm) {
  notifyObserversOnFarmChange(farm, FarmChange::kChanged);
}

void OvFarmManager::addFarmObserver(const std::shared_ptr<OvFarmManagerObserver>& observer) {
  removeFarmObserver(observer);
  _farmManagerObservers.push_back(observer);
}

void OvFarmManager::removeFarmObserver(const std::shared_ptr<OvFarmManagerObserver>& observer) {
  std::erase_if(_farmManagerObservers, [&](const auto& each) { return each.expired() || each.lock() == observer; });
}

void OvFarmManager::notifyObserversOnFarmChange(const std::shared_ptr<OvFarm>& farm, FarmChange state) {
  for (const auto& each : std::vector(_farmManagerObservers)) {
    const auto observer = each.lock();
    const auto isObserver = [&](const auto& current) { return current.lock() == observer; };
    if (observer && std::ranges::any_of(_farmManagerObservers, isObserver)) observer->farmStateDidChange(state, farm);
  }
}

// Moves a file that this program could not understand out of the way of the one that it writes.
bool OvFarmManager::setUnreadableFileAside() {
  if (!_fileIsUnreadable) return true;
  std::string aside = _filePath + ".unreadable";
  for (int number = 2; renameat2(AT_FDCWD, _filePath.c_str(), AT_FDCWD, aside.c_str(), RENAME_NOREPLACE) != 0;
       ++number) {
    if (errno == ENOENT) break;  // somebody else took it away
    if (errno != EEXIST) return false;
    aside = _filePath + ".unreadable-" + std::to_string(number);
  }
  OvWriteLog(2, "%s: The farms' file could not be read and is kept as %s", "save", aside.c_str());
  _fileIsUnreadable = false;
  return true;
}

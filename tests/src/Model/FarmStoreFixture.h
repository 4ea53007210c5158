#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Model/OvFarmManager.h"
#include "Support/FakeSecretStore.h"
#include "Support/PumpedQueue.h"
#include "Support/TemporaryFolder.h"

/// A farm that differs from others by its name.
inline std::shared_ptr<OvFarm> farmNamed(const std::string& name) {
  auto farm = std::make_shared<OvFarm>();
  farm->setName(name);
  return farm;
}

/// One whose user wants the password saved.
inline std::shared_ptr<OvFarm> farmWithPassword(const std::string& name, const std::string& password) {
  auto farm = farmNamed(name);
  farm->credentials().setUsername("user of " + name);
  farm->credentials().setDomain("HAFENWERK");
  farm->credentials().setNeedToSave(true);
  farm->credentials().setPassword(SecretText(password));
  return farm;
}

inline std::vector<std::string> namesOf(const OvFarmManager& manager) {
  std::vector<std::string> names;
  for (const auto& farm : manager.farms()) names.push_back(farm->name());
  return names;
}

inline std::vector<std::string> passwordsOf(const OvFarmManager& manager) {
  std::vector<std::string> passwords;
  for (const auto& farm : manager.farms()) passwords.push_back(farm->credentials().password().text());
  return passwords;
}

/// A desktop with one user: a file and a secret store, over several starts of the program.
class FarmStoreFixture {
 public:
  /// A start of the program.
  std::unique_ptr<OvFarmManager> start() {
    return std::make_unique<OvFarmManager>(file(), std::make_shared<MCCachedKeychain>(secrets), queue, queue);
  }
  /// A start that has read everything.
  std::unique_ptr<OvFarmManager> startAndLoad() {
    auto manager = start();
    manager->load();
    queue->pump();
    return manager;
  }
  void save(OvFarmManager& manager) {
    manager.save();
    queue->pump();
  }
  std::string file() const { return folder.file("settings_2.plist"); }

  const TemporaryFolder folder{};
  std::shared_ptr<FakeSecretStore> secrets = std::make_shared<FakeSecretStore>();
  const std::shared_ptr<PumpedQueue> queue = std::make_shared<PumpedQueue>();
};

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FarmStoreFixture.h"
#include "Platform/KeyedArchive.h"

namespace {

using testing::ElementsAre;

constexpr const char* kItem = "passwordKeyForKeyChain";

std::vector<uint8_t> archiveOf(const std::vector<std::pair<std::string, std::string>>& passwords) {
  orvane::KeyedArchiver archiver;
  for (const auto& [key, password] : passwords) archiver.encodeString(key, password);
  return archiver.finish();
}

class FarmPasswordsTest : public testing::Test {
 protected:
  // What the secret store has, "key=password".
  std::vector<std::string> stored(const std::string& item = kItem) const {
    std::vector<std::string> entries;
    const auto bytes = desktop_.secrets->stored(item);
    if (!bytes) return {"no item"};
    const orvane::KeyedObject passwords = orvane::openKeyedArchive(*bytes);
    for (const std::string& key : passwords.keys()) {
      if (key == "farmNames") continue;
      entries.push_back(key + "=" + passwords.string(key).value());
    }
    return entries;
  }

  // A file with farms whose passwords are in the store.
  void saveFarms(const std::vector<std::string>& names) {
    const auto manager = desktop_.startAndLoad();
    for (const std::string& name : names) manager->addFarm(farmWithPassword(name, "secret " + name));
    desktop_.save(*manager);
  }
  void saveTwoFarms() { saveFarms({"A", "B"}); }

  FarmStoreFixture desktop_;
};

TEST_F(FarmPasswordsTest, OnlyWantedPasswordsAreStored) {
  const auto manager = desktop_.startAndLoad();
  manager->addFarm(farmNamed("no user"));
  desktop_.save(*manager);
  EXPECT_EQ(desktop_.secrets->saves(), 0) << "nobody is asked to unlock a store for nothing";

  manager->addFarm(farmWithPassword("A", "secret"));
  manager->addFarm(farmWithPassword("B", "other"));
  manager->farms()[2]->credentials().setNeedToSave(false);
  desktop_.save(*manager);
  EXPECT_THAT(stored(), ElementsAre("1:user of A:HAFENWERK=secret"));
  desktop_.save(*manager);
  EXPECT_EQ(desktop_.secrets->saves(), 1) << "nothing new";

  manager->removeFarm(manager->farms()[1]);
  desktop_.save(*manager);
  EXPECT_THAT(stored(), ElementsAre());
}

TEST_F(FarmPasswordsTest, TheOlderFormOfTheKeyIsReadAndRewritten) {
  saveTwoFarms();
  desktop_.secrets->put(kItem, archiveOf({{"A:user of A:HAFENWERK", "old A"},
                                          {"B:user of B:HAFENWERK", "old B"},
                                          {"1:user of B:HAFENWERK", "new B"}}));
  const auto manager = desktop_.startAndLoad();
  EXPECT_THAT(passwordsOf(*manager), ElementsAre("old A", "new B"));
  desktop_.save(*manager);
  EXPECT_THAT(stored(), ElementsAre("0:user of A:HAFENWERK=old A", "1:user of B:HAFENWERK=new B"));
}

TEST_F(FarmPasswordsTest, AStoreThatWasLockedAtStartIsNotOverwritten) {
  saveTwoFarms();
  desktop_.secrets->setUnreadable(true);
  const auto manager = desktop_.startAndLoad();
  EXPECT_THAT(passwordsOf(*manager), ElementsAre("", ""));
  manager->removeFarm(manager->farms()[0]);
  manager->addFarm(farmWithPassword("C", "secret C"));
  desktop_.save(*manager);
  EXPECT_THAT(stored(), ElementsAre("0:user of A:HAFENWERK=secret A", "1:user of B:HAFENWERK=secret B"));

  desktop_.secrets->setUnreadable(false);
  desktop_.save(*manager);
  EXPECT_THAT(passwordsOf(*manager), ElementsAre("secret B", "secret C")) << "the keys were those of the loaded list";
  EXPECT_THAT(stored(), ElementsAre("0:user of B:HAFENWERK=secret B", "1:user of C:HAFENWERK=secret C"));
}

TEST_F(FarmPasswordsTest, AnItemThatShowsLateIsReadBeforeItIsWritten) {
  saveTwoFarms();
  const auto item = desktop_.secrets->stored(kItem).value();
  desktop_.secrets = std::make_shared<FakeSecretStore>();
  const auto manager = desktop_.startAndLoad();
  EXPECT_THAT(passwordsOf(*manager), ElementsAre("", ""));
  desktop_.secrets->put(kItem, item);
  manager->farms()[0]->credentials().setPassword(SecretText("new A"));
  desktop_.save(*manager);
  EXPECT_THAT(stored(), ElementsAre("0:user of A:HAFENWERK=new A", "1:user of B:HAFENWERK=secret B"));
}

TEST_F(FarmPasswordsTest, PasswordsStayWithTheirFarmsOverAStartThatCouldNotWriteThem) {
  {
    const auto manager = desktop_.startAndLoad();
    for (const char* name : {"A", "B", "C", "B"}) {
      manager->addFarm(farmWithPassword(name, "secret " + std::to_string(manager->farms().size())));
      manager->farms().back()->credentials().setUsername("anna");
    }
    desktop_.save(*manager);
  }
  desktop_.secrets->setUnreadable(true);
  {
    const auto manager = desktop_.startAndLoad();
    manager->removeFarm(manager->farms()[0]);
    desktop_.save(*manager);
  }
  desktop_.secrets->setUnreadable(false);
  EXPECT_THAT(passwordsOf(*desktop_.startAndLoad()), ElementsAre("secret 1", "secret 2", "secret 3"));

  desktop_.secrets->setUnreadable(true);
  {
    const auto manager = desktop_.startAndLoad();
    manager->farms()[1]->setName("renamed");
    manager->addFarm(farmWithPassword("new", ""));
    desktop_.save(*manager);
  }
  desktop_.secrets->setUnreadable(false);
  EXPECT_THAT(passwordsOf(*desktop_.startAndLoad()), ElementsAre("secret 1", "", "secret 3", ""))
      << "rather none than another farm's";
}

TEST_F(FarmPasswordsTest, AStoreThatOpensLaterIsPickedUp) {
  saveFarms({"removed", "typed", "moved", "somebody else's"});
  desktop_.secrets->setUnreadable(true);
  const auto manager = desktop_.startAndLoad();
  manager->removeFarm(manager->farms()[0]);
  manager->farms()[0]->credentials().setPassword(SecretText("typed"));
  manager->farms()[1]->setName("renamed");
  manager->farms()[2]->credentials().setUsername("somebody else");
  desktop_.secrets->setUnreadable(false);
  bool isSettled = false;
  manager->loadPasswordsFromKeychain([&] { isSettled = true; });
  desktop_.queue->pump();
  EXPECT_TRUE(isSettled);
  EXPECT_THAT(passwordsOf(*manager), ElementsAre("typed", "secret moved", ""));
}

TEST_F(FarmPasswordsTest, WhatCannotBeUnderstoodIsKeptBeside) {
  constexpr const char* kBeside = "passwordKeyForKeyChain.unreadable";
  saveTwoFarms();
  const auto before = stored();
  writeFile(desktop_.file(), "damaged");
  desktop_.secrets->setUnreadable(true);
  auto manager = desktop_.startAndLoad();
  desktop_.save(*manager);
  desktop_.secrets->setUnreadable(false);
  manager->loadPasswordsFromKeychain();
  desktop_.save(*manager);
  EXPECT_THAT(stored(), ElementsAre()) << "there is no farm";
  EXPECT_EQ(stored(kBeside), before) << "for the farms of the damaged file";

  desktop_.secrets->put(kItem, {'d', 'a', 'm', 'a', 'g', 'e', 'd'});
  manager = desktop_.startAndLoad();
  manager->addFarm(farmWithPassword("A", "secret A"));
  desktop_.secrets->setRefusesSaves(true);
  desktop_.save(*manager);
  desktop_.secrets->setRefusesSaves(false);
  desktop_.save(*manager);
  EXPECT_THAT(stored(), ElementsAre("0:user of A:HAFENWERK=secret A"));
  EXPECT_EQ(stored(kBeside), before);
  EXPECT_EQ(desktop_.secrets->stored(std::string(kBeside) + "-2")->size(), 7u);
}

TEST_F(FarmPasswordsTest, NobodyWaitsForASlowStore) {
  saveTwoFarms();
  const int loadsBefore = desktop_.secrets->loads();
  desktop_.secrets->block();
  const auto background = std::make_shared<PumpedQueue>();
  OvFarmManager manager(desktop_.file(), std::make_shared<MCCachedKeychain>(desktop_.secrets), background,
                        desktop_.queue);
  manager.load();
  manager.farms()[0]->setUserDescription("changed");
  manager.save();
  EXPECT_EQ(desktop_.secrets->loads(), loadsBefore);
  EXPECT_EQ(background->size(), 2u);
  desktop_.secrets->release();
  while (background->pump() + desktop_.queue->pump() > 0) {
  }
  EXPECT_THAT(passwordsOf(manager), ElementsAre("secret A", "secret B"));
  EXPECT_THAT(stored(), ElementsAre("0:user of A:HAFENWERK=secret A", "1:user of B:HAFENWERK=secret B"));
}

TEST_F(FarmPasswordsTest, TheKeysOfAFarm) {
  const auto manager = desktop_.startAndLoad();
  manager->addFarm(farmNamed("first"));
  const auto farm = farmWithPassword("second", "secret");
  manager->addFarm(farm);
  EXPECT_EQ(manager->keyForPasswordByFarmIndex(*farm), "1:user of second:HAFENWERK");
  EXPECT_EQ(manager->keyForPasswordByFarmIndex(*farmNamed("unknown")), "");
  EXPECT_EQ(OvFarmManager::keyForPasswordByFarmName(*farm), "second:user of second:HAFENWERK");
}

}  // namespace

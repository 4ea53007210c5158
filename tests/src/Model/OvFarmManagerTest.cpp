#include <csignal>
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FarmStoreFixture.h"
#include "Platform/KeyedArchive.h"
#include "Support/ChildProcess.h"
#include "Support/OvWriteLog.h"
#include "Support/ResourceLimit.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OvFarmManagerTest : public testing::Test {
 protected:
  FarmStoreFixture desktop_;
  std::unique_ptr<OvFarmManager> manager_ = desktop_.start();
};

TEST_F(OvFarmManagerTest, TheListHoldsEachFarmOnce) {
  const auto first = farmNamed("first");
  first->setFarmDBGUID("{1}");
  manager_->addFarm(first);
  manager_->addFarm(farmNamed("second"));
  manager_->addFarm(std::make_shared<OvFarm>(*first));
  EXPECT_THAT(namesOf(*manager_), ElementsAre("first", "second"));
  EXPECT_EQ(manager_->findFarmWithGUID("{1}"), first);
  EXPECT_EQ(manager_->findFarmWithGUID("{2}"), nullptr);
  EXPECT_TRUE(manager_->containsFarm(OvFarm(*first)));
  manager_->removeFarm(std::make_shared<OvFarm>(*first));
  EXPECT_FALSE(manager_->containsFarm(*first));
  manager_->removeAllFarms();
  EXPECT_THAT(manager_->farms(), IsEmpty());
}

TEST_F(OvFarmManagerTest, OneFarmAtMostIsAutolaunched) {
  EXPECT_EQ(manager_->autolaunchedFarm(), nullptr);
  const auto first = farmNamed("first");
  const auto second = farmNamed("second");
  manager_->addFarm(first);
  EXPECT_EQ(manager_->autolaunchedFarm(), first) << "the only one, whatever its flag";
  manager_->addFarm(second);
  EXPECT_EQ(manager_->autolaunchedFarm(), nullptr);

  first->setDoAutoLaunch(true);
  second->setDoAutoLaunch(true);
  manager_->setAutolaunchedFarm(farmNamed("unknown"));
  manager_->setAutolaunchedFarm(nullptr);
  EXPECT_EQ(manager_->autolaunchedFarm(), first);
  manager_->setAutolaunchedFarm(second);
  EXPECT_EQ(manager_->autolaunchedFarm(), second);
  EXPECT_FALSE(first->doAutoLaunch());
  manager_->setAutolaunchedFarm(first);
  EXPECT_EQ(manager_->autolaunchedFarm(), nullptr) << "it never sets the flag by itself";
}

// Writes down what it is told, and does what the test wants done at each.
class Recorder : public OvFarmManagerObserver {
 public:
  void farmStateDidChange(FarmChange state, const std::shared_ptr<OvFarm>& farm) override {
    told.push_back(std::to_string(static_cast<int>(state)) + (farm ? " " + farm->name() : ""));
    if (whenTold) whenTold();
  }
  std::vector<std::string> told;
  std::function<void()> whenTold;
};

TEST_F(OvFarmManagerTest, ObserversLearnOfEachChange) {
  const auto observer = std::make_shared<Recorder>();
  manager_->addFarmObserver(observer);
  manager_->addFarmObserver(observer);
  const auto farm = farmNamed("F");
  manager_->addFarm(farm);
  manager_->addFarm(farm);
  manager_->notifyOnFarmChange(farm);
  desktop_.save(*manager_);
  manager_->removeFarm(farm);
  manager_->removeAllFarms();
  EXPECT_THAT(observer->told, ElementsAre("0 F", "3 F", "4", "1 F", "2"));
}

TEST_F(OvFarmManagerTest, ObserversMayComeAndGoWhileBeingTold) {
  const auto first = std::make_shared<Recorder>();
  const auto removed = std::make_shared<Recorder>();
  const auto added = std::make_shared<Recorder>();
  auto dead = std::make_shared<Recorder>();
  for (const auto& observer : {first, removed, dead}) manager_->addFarmObserver(observer);
  first->whenTold = [&] {
    manager_->removeFarmObserver(removed);
    manager_->addFarmObserver(added);
    dead = nullptr;
  };
  manager_->removeAllFarms();
  first->whenTold = nullptr;
  manager_->removeAllFarms();
  EXPECT_EQ(first->told.size(), 2u);
  EXPECT_THAT(removed->told, IsEmpty());
  EXPECT_EQ(added->told.size(), 1u);
}

TEST_F(OvFarmManagerTest, AStoreComesBackAsItWas) {
  manager_->addFarm(farmWithPassword("first", "secret"));
  const auto second = farmNamed("zweite 🚢");
  second->setDoAutoLaunch(true);
  second->addLocation(OvLocation::location());
  second->addLocation(OvLocation::location());
  second->locations()[1]->setBrokers({"a", "b"});
  second->display().setCustomWidth(1);
  second->display().setCustomHeight(1);
  manager_->addFarm(second);
  desktop_.save(*manager_);

  EXPECT_EQ(modeOf(desktop_.file()), 0600u);
  const auto loaded = desktop_.startAndLoad();
  EXPECT_THAT(namesOf(*loaded), ElementsAre("first", "zweite 🚢"));
  EXPECT_THAT(passwordsOf(*loaded), ElementsAre("secret", ""));
  EXPECT_TRUE(*loaded->farms()[1] == *second);
  EXPECT_EQ(loaded->autolaunchedFarm(), loaded->farms()[1]);
}

TEST_F(OvFarmManagerTest, TheIndexOfTheAutolaunchedFarmIsRecorded) {
  const auto recordedIndex = [&] {
    return orvane::openKeyedArchive(manager_->saveToData()).dictionary("root")->integer("m_autolaunchedFarmIndex");
  };
  EXPECT_EQ(recordedIndex(), 4294967295);
  manager_->addFarm(farmNamed("first"));
  EXPECT_EQ(recordedIndex(), 0);
  manager_->addFarm(farmNamed("second"));
  EXPECT_EQ(recordedIndex(), 4294967295);
  manager_->farms()[1]->setDoAutoLaunch(true);
  EXPECT_EQ(recordedIndex(), 1);
}

TEST_F(OvFarmManagerTest, WhatIsNoStoreLeavesTheListAsItIs) {
  manager_->addFarm(farmNamed("kept"));
  orvane::KeyedArchiver empty;
  empty.encodeDictionary("root", [](orvane::KeyedArchiver&) {});
  orvane::KeyedArchiver wrongClass;
  wrongClass.encodeDictionary("root", [](orvane::KeyedArchiver& root) {
    root.encodeObjects("m_connections", "OvLocation", 1, [](orvane::KeyedArchiver&, size_t) {});
  });
  orvane::KeyedArchiver tooMany;
  tooMany.encodeDictionary("root", [](orvane::KeyedArchiver& root) {
    root.encodeObjects("m_connections", "OvFarm", OvFarmManager::kMaximumFarms + 1,
                       [](orvane::KeyedArchiver&, size_t) {});
  });
  orvane::KeyedArchiver wrongNumber;
  wrongNumber.encodeDictionary("root", [](orvane::KeyedArchiver& root) {
    root.encodeObjects("m_connections", "OvFarm", 1, [](orvane::KeyedArchiver& farm, size_t) {
      farm.encodeInteger("defaultLocationIndex", int64_t{1} << 40);
    });
  });
  const std::vector<uint8_t> whole = manager_->saveToData();
  for (const std::vector<uint8_t>& data :
       {std::vector<uint8_t>(), std::vector<uint8_t>(whole.begin(), whole.end() - 9), empty.finish(),
        wrongClass.finish(), tooMany.finish(), wrongNumber.finish()}) {
    EXPECT_FALSE(manager_->loadFromData(data)) << data.size();
    EXPECT_THAT(namesOf(*manager_), ElementsAre("kept"));
  }
}

TEST_F(OvFarmManagerTest, AnUnreadableFileIsKeptBeside) {
  for (const std::string name : {"settings_2.plist.unreadable", "settings_2.plist.unreadable-2"}) {
    writeFile(desktop_.file(), "not a store " + name);
    const auto manager = desktop_.startAndLoad();
    manager->addFarm(farmNamed("new"));
    desktop_.save(*manager);
    desktop_.save(*manager);
    EXPECT_EQ(contentOf(desktop_.folder.file(name)), "not a store " + name);
    EXPECT_THAT(namesOf(*desktop_.startAndLoad()), ElementsAre("new"));
  }
}

TEST_F(OvFarmManagerTest, AFailedSaveIsMadeUpForByTheNext) {
  manager_->addFarm(farmNamed("old"));
  manager_->save();
  manager_->addFarm(farmNamed("new"));
  {
    const ResourceLimit full(RLIMIT_FSIZE, 100);
    manager_->save();
  }
  EXPECT_THAT(namesOf(*desktop_.startAndLoad()), ElementsAre("old"));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(desktop_.folder.path()), {}), 1)
      << "nothing is left beside";
  manager_->save();
  EXPECT_THAT(namesOf(*desktop_.startAndLoad()), ElementsAre("old", "new"));
}

TEST_F(OvFarmManagerTest, APasswordIsNeitherInTheFileNorInTheLog) {
  const std::string log = desktop_.folder.file("log");
  OvSetLogFile(log.c_str());
  OvSetLogLevel(6);
  const std::string password = "unmistakable secret";
  manager_->addFarm(farmWithPassword("A", password));
  desktop_.save(*manager_);
  EXPECT_THAT(passwordsOf(*desktop_.startAndLoad()), ElementsAre(password));
  OvSetLogFile(nullptr);
  EXPECT_THAT(contentOf(log), testing::HasSubstr("Saved 1 farms."));
  for (const std::string& file : {log, desktop_.file()}) {
    EXPECT_EQ(contentOf(file).find("unmistakable"), std::string::npos) << file;
  }
}

// A program that saves and is killed, many times, at any point of its saving.
TEST_F(OvFarmManagerTest, AKilledProcessLeavesAWholeFile) {
  for (int number = 0; number < 20; ++number) manager_->addFarm(farmNamed(std::to_string(number)));
  desktop_.save(*manager_);
  for (int kill = 0; kill < 40; ++kill) {
    ChildProcess saving(ORVANE_SAVING_PROGRAM, {desktop_.file()});
    for (int line = 0; line <= kill % 4; ++line) ASSERT_EQ(saving.line(), "saving\n");
    for (int reading = 0; reading < kill; ++reading) ASSERT_FALSE(contentOf(desktop_.file()).empty());
    saving.end(SIGKILL);
    const auto manager = desktop_.startAndLoad();
    ASSERT_EQ(manager->farms().size(), 20u);
    EXPECT_EQ(manager->farms()[19]->userDescription(), manager->farms()[0]->userDescription());
  }
}

TEST_F(OvFarmManagerTest, TenThousandFarmsAreNoTrouble) {
  constexpr size_t kFarms = 10'000;
  orvane::KeyedArchiver archiver;
  archiver.encodeDictionary("root", [](orvane::KeyedArchiver& root) {
    root.encodeObjects("m_connections", "OvFarm", kFarms, [](orvane::KeyedArchiver& fields, size_t index) {
      OvFarmConfiguration farm;
      farm.setName(std::to_string(index));
      farm.encodeWithCoder(fields);
    });
  });
  ASSERT_TRUE(manager_->loadFromData(archiver.finish()));
  manager_->addFarm(farmNamed("one more"));
  OvFarmManager loaded(desktop_.file(), nullptr, desktop_.queue, desktop_.queue);
  ASSERT_TRUE(loaded.loadFromData(manager_->saveToData()));
  EXPECT_EQ(loaded.farms().size(), kFarms + 1);
  EXPECT_EQ(namesOf(loaded), namesOf(*manager_));
}

}  // namespace

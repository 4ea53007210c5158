#include <csignal>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FarmStoreFixture.h"
#include "Platform/Linux/SecretService.h"
#include "Support/SecretServiceOfTest.h"

// The farms' passwords in the desktop's own keyring, through its bad days.

namespace {

using testing::ElementsAre;

class FarmPasswordsOnTheDesktopTest : public testing::Test {
 protected:
  std::unique_ptr<OvFarmManager> startAndLoad() {
    const auto secrets = std::make_shared<orvane::SecretService>(
        orvane::SecretService::Bounds{.service = patience_, .prompt = patience_});
    auto manager = std::make_unique<OvFarmManager>(desktop_.file(), std::make_shared<MCCachedKeychain>(secrets),
                                                   desktop_.queue, desktop_.queue);
    manager->load();
    desktop_.queue->pump();
    return manager;
  }

  // What another start finds in an open keyring.
  std::vector<std::string> storedPasswords() { return passwordsOf(*startAndLoad()); }

  void saveTwoFarms() {
    const auto manager = startAndLoad();
    manager->addFarm(farmWithPassword("A", "secret A"));
    manager->addFarm(farmWithPassword("B", "secret B"));
    desktop_.save(*manager);
  }

  std::chrono::seconds patience_{60};
  SecretServiceOfTest service_;
  FarmStoreFixture desktop_;
};

TEST_F(FarmPasswordsOnTheDesktopTest, LockedAtStartAndUnlockedInTheMiddle) {
  service_.startOpen();
  saveTwoFarms();
  service_.startLocked();
  const auto manager = startAndLoad();
  EXPECT_THAT(passwordsOf(*manager), ElementsAre("", ""));
  manager->farms()[0]->credentials().setPassword(SecretText("new A"));
  desktop_.save(*manager);

  service_.startOpen();
  EXPECT_THAT(storedPasswords(), ElementsAre("secret A", "secret B")) << "not touched while it was locked";
  desktop_.save(*manager);
  EXPECT_THAT(passwordsOf(*manager), ElementsAre("new A", "secret B"));
  EXPECT_THAT(storedPasswords(), ElementsAre("new A", "secret B"));
}

TEST_F(FarmPasswordsOnTheDesktopTest, KilledAndRestarted) {
  service_.startOpen();
  saveTwoFarms();
  const auto manager = startAndLoad();
  service_.signalDaemon(SIGKILL);
  manager->farms()[0]->credentials().setPassword(SecretText("new A"));
  desktop_.save(*manager);
  service_.startOpen();
  EXPECT_THAT(storedPasswords(), ElementsAre("secret A", "secret B"));
  desktop_.save(*manager);
  EXPECT_THAT(storedPasswords(), ElementsAre("new A", "secret B"));
}

TEST_F(FarmPasswordsOnTheDesktopTest, NeverAnswering) {
  service_.startOpen();
  saveTwoFarms();
  service_.signalDaemon(SIGSTOP);
  patience_ = std::chrono::seconds(1);
  const auto manager = startAndLoad();
  desktop_.save(*manager);
  EXPECT_THAT(namesOf(*manager), ElementsAre("A", "B"));
  service_.signalDaemon(SIGCONT);
  patience_ = std::chrono::seconds(60);
  EXPECT_THAT(storedPasswords(), ElementsAre("secret A", "secret B"));
}

}  // namespace

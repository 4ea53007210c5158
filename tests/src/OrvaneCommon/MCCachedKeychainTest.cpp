#include "OrvaneCommon/MCCachedKeychain.h"
#include "OrvaneCommon/MCKeychain.h"
#include "Support/FakeSecretStore.h"
#include "Support/OvWriteLog.h"
#include "Support/TemporaryFolder.h"

namespace {

using Reading = orvane::SecretStore::Reading;
using Bytes = std::vector<uint8_t>;

class MCCachedKeychainTest : public testing::Test {
 protected:
  // What a load of "key" gives, as one value to compare.
  std::pair<Reading, Bytes> loaded(const std::string& key = "key") {
    orvane::SecretStore::Item item = keychain_.loadDataForKey(key);
    return {item.reading, item.bytes};
  }
  bool save(const Bytes& data, const std::string& key = "key") { return keychain_.saveData(data, key); }

  const std::shared_ptr<FakeSecretStore> store_ = std::make_shared<FakeSecretStore>();
  MCCachedKeychain keychain_{store_};
};

TEST_F(MCCachedKeychainTest, OnlyDataThatIsNotInTheStoreIsWritten) {
  EXPECT_TRUE(save({1, 0, 2}));
  EXPECT_TRUE(save({1, 0, 2}));
  EXPECT_EQ(store_->saves(), 1);
  EXPECT_EQ(store_->stored("key"), (Bytes{1, 0, 2}));
  EXPECT_TRUE(save({1, 0, 3}));
  EXPECT_EQ(store_->stored("key"), (Bytes{1, 0, 3}));
  EXPECT_TRUE(save({}));
  EXPECT_EQ(store_->stored("key"), Bytes{});
}

TEST_F(MCCachedKeychainTest, WhatWasLoadedIsNeitherAskedForNorWrittenAgain) {
  store_->put("key", {7});
  EXPECT_EQ(loaded(), std::pair(Reading::kFound, Bytes{7}));
  EXPECT_EQ(loaded(), std::pair(Reading::kFound, Bytes{7}));
  EXPECT_EQ(loaded("other"), std::pair(Reading::kAbsent, Bytes{}));
  EXPECT_TRUE(save({7}));
  EXPECT_TRUE(save({}, "other"));
  EXPECT_EQ(store_->loads(), 2);
  EXPECT_EQ(store_->saves(), 0);
}

TEST_F(MCCachedKeychainTest, AnAbsentItemIsAskedForAgain) {
  EXPECT_EQ(loaded(), std::pair(Reading::kAbsent, Bytes{}));
  store_->put("key", {7});
  EXPECT_EQ(loaded(), std::pair(Reading::kFound, Bytes{7}));
}

TEST_F(MCCachedKeychainTest, AnUnreadableItemIsAskedForAgainAndOverwrittenWhenAsked) {
  store_->put("key", {7});
  store_->setUnreadable(true);
  EXPECT_EQ(loaded(), std::pair(Reading::kUnreadable, Bytes{}));
  EXPECT_FALSE(save({}, "other"));
  store_->setUnreadable(false);
  EXPECT_EQ(loaded(), std::pair(Reading::kFound, Bytes{7}));
  EXPECT_TRUE(save({}, "other"));
  EXPECT_EQ(store_->stored("other"), Bytes{});
}

TEST_F(MCCachedKeychainTest, DataThatCouldNotBeWrittenIsKeptAndTriedAgain) {
  const TemporaryFolder folder;
  OvSetLogFile(folder.file("log").c_str());
  store_->setRefusesSaves(true);
  EXPECT_FALSE(save({1}));
  EXPECT_THAT(contentOf(folder.file("log")),
              testing::EndsWith(": MCSaveIntoKeyChain: error occurred (error code = 1)\n"));
  EXPECT_EQ(loaded(), std::pair(Reading::kFound, Bytes{1}));
  EXPECT_FALSE(save({1}));
  store_->setRefusesSaves(false);
  EXPECT_TRUE(save({1}));
  EXPECT_EQ(store_->saves(), 3);
  EXPECT_EQ(store_->stored("key"), Bytes{1});
}

TEST_F(MCCachedKeychainTest, AnEmptyKeyIsNoKey) {
  EXPECT_FALSE(save({1}, ""));
  EXPECT_FALSE(MCSaveIntoKeyChain(*store_, "", Bytes{1}));
  EXPECT_EQ(loaded(""), std::pair(Reading::kAbsent, Bytes{}));
  EXPECT_EQ(store_->saves() + store_->loads(), 0);
}

TEST_F(MCCachedKeychainTest, AtLastTheStoreHoldsWhatTheCacheHolds) {
  store_->block();
  std::vector<std::thread> threads;
  for (uint8_t i = 0; i < 4; ++i) threads.emplace_back([this, i] { save({i}); });
  store_->awaitBlockedCalls();
  store_->release();
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(loaded(), std::pair(Reading::kFound, store_->stored("key").value()));
}

}  // namespace

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FarmStoreFixture.h"
#include "src/Platform/PythonArchive.h"

// The store as others write and read it: by a script that knows the archive's layout and nothing of this program.

namespace {

using testing::ElementsAre;

class FarmStoreFormatTest : public testing::Test {
 protected:
  FarmStoreFixture desktop_;
};

TEST_F(FarmStoreFormatTest, AStoreOfAnEarlierVersionLoads) {
  ASSERT_EQ(runPythonArchive("write", desktop_.file(), R"({"root": {
      "m_autolaunchedFarmIndex": 1,
      "m_connections": [
        {"$class": "MCFarm", "farmName": "Werft Süd 🚢", "farmDBGUID": "{1}", "doAutoLaunch": true, "doReconnect": false,
         "credentials": {"$class": "MCCredentials", "username": "anna", "domain": "HAFENWERK", "doSave": true},
         "displaySettings": {"$class": "MCDisplay", "color": 16, "width": 1024, "height": 700, "fullscreen": false},
         "resources": {"$class": "MCResources", "sound": 1},
         "performance": {"$class": "MCPerformance", "connectionSpeed": 3},
         "locations": [{"$class": "MCLocation", "name": {"$mutable": "Büro"}, "port": "443", "protocol": "1",
                        "doUseSsl": true, "sslGateway": "gateway", "brokers": ["a", {"$mutable": "b"}]}],
         "apps": ["Mail"], "defaultLocationIndex": -1, "prefferedLocationName": "Büro"},
        {"$class": "MCFarm", "farmName": "bare", "credentials": null, "locations": null}]}})"),
            "");
  desktop_.secrets->put("passwordKeyForKeyChain", [&] {
    const std::string item = desktop_.folder.file("item");
    runPythonArchive("write", item, R"({"Werft Süd 🚢:anna:HAFENWERK": "secret"})");
    const std::string bytes = contentOf(item);
    return std::vector<uint8_t>(bytes.begin(), bytes.end());
  }());
  const auto manager = desktop_.startAndLoad();
  ASSERT_THAT(namesOf(*manager), ElementsAre("Werft Süd 🚢", "bare"));
  EXPECT_THAT(passwordsOf(*manager), ElementsAre("secret", ""));
  EXPECT_EQ(manager->autolaunchedFarm(), manager->farms()[0]) << "the flag decides, not the index";

  const OvFarm& farm = *manager->farms()[0];
  EXPECT_EQ(farm.farmDBGUID(), "{1}");
  EXPECT_FALSE(farm.doReconnect());
  EXPECT_EQ(farm.credentials().username(), "anna");
  EXPECT_EQ(farm.display().customWidth(), 1024);
  EXPECT_EQ(farm.display().color(), 16);
  EXPECT_EQ(farm.resourses().sound(), 1);
  EXPECT_EQ(farm.performance().connectionSpeed(), 3);
  EXPECT_FALSE(farm.performance().doUseThemes()) << "what the archive lacks";
  EXPECT_EQ(farm.defaultLocationIndex(), -1);
  EXPECT_THAT(farm.autoLaunchApps(), ElementsAre("Mail"));
  OvLocation location;
  location.setName("Büro");
  location.setPort(443);
  location.setProtocol(1);
  location.setDoUseSsl(true);
  location.setSslGateway("gateway");
  location.setBrokers({"a", "b"});
  ASSERT_EQ(farm.locations().size(), 1u);
  EXPECT_TRUE(*farm.locations()[0] == location);

  const OvFarm& bare = *manager->farms()[1];
  EXPECT_TRUE(bare.credentials() == OvCredentials());
  EXPECT_TRUE(bare.performance() == OvPerformance()) << "a record that is absent is a new one";
  EXPECT_TRUE(bare.locations().empty());
}

TEST_F(FarmStoreFormatTest, OthersReadOurs) {
  const auto manager = desktop_.startAndLoad();
  manager->addFarm(farmWithPassword("Werft", "secret"));
  const auto location = OvLocation::location();
  location->setName("Büro");
  location->setPort(443);
  location->setBrokers({"a", "b"});
  manager->farms()[0]->addLocation(location);
  desktop_.save(*manager);

  const std::string store = runPythonArchive("dump", desktop_.file());
  for (const char* part :
       {R"("m_autolaunchedFarmIndex": 0)", R"("$class": "OvFarm")", R"("farmName": "Werft")", R"("doReconnect": true)",
        R"("$class": "OvLocation")", R"("name": "Büro")", R"("port": "443")", R"("protocol": "0")",
        R"("brokers": ["a", "b"])", R"("$class": "OvCredentials")", R"("username": "user of Werft")",
        R"("doSave": true)", R"("$class": "OvDisplay")", R"("customWidth": 0)", R"("$class": "OvResources")",
        R"("$class": "OvPerformance")", R"("connectionSpeed": 6)", R"("apps": [])"}) {
    EXPECT_THAT(store, testing::HasSubstr(part));
  }
  EXPECT_THAT(store, testing::Not(testing::HasSubstr("sslGateway")));

  const auto item = desktop_.secrets->stored("passwordKeyForKeyChain").value();
  writeFile(desktop_.folder.file("item"), std::string(item.begin(), item.end()));
  EXPECT_THAT(runPythonArchive("dump", desktop_.folder.file("item")),
              testing::HasSubstr(R"("0:user of Werft:HAFENWERK": "secret")"));
}

}  // namespace

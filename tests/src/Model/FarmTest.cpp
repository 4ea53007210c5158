#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Model/OvFarm.h"
#include "Platform/KeyedArchive.h"

namespace {

std::shared_ptr<OvLocation> locationNamed(const std::string& name) {
  auto location = OvLocation::location();
  location->setName(name);
  return location;
}

std::shared_ptr<OvFarm> farmWithLocations(const std::vector<std::string>& names) {
  auto farm = std::make_shared<OvFarm>();
  for (const std::string& name : names) farm->addLocation(locationNamed(name));
  return farm;
}

std::vector<std::string> namesOf(const OvLocationList& locations) {
  std::vector<std::string> names;
  for (const auto& location : locations) names.push_back(location->name());
  return names;
}

using testing::ElementsAre;

TEST(FarmTest, ACopySharesNothing) {
  const auto farm = farmWithLocations({"A", "B"});
  farm->autoLaunchApps() = {"Mail"};
  const OvFarm copy = *farm;
  EXPECT_TRUE(copy == *farm);
  EXPECT_NE(copy.brokerClient(), farm->brokerClient());
  EXPECT_NE(copy.brokerClientDispatchQueue(), farm->brokerClientDispatchQueue());
  farm->locations()[1]->setName("C");
  EXPECT_FALSE(copy == *farm);
  EXPECT_THAT(namesOf(copy.locations()), ElementsAre("A", "B"));
}

TEST(FarmTest, AConfigurationIsReplacedUnderARunningClient) {
  const auto farm = farmWithLocations({"A"});
  const auto client = farm->brokerClient();
  const auto queue = farm->brokerClientDispatchQueue();
  const auto other = farmWithLocations({"B", "C"});
  other->setName("other");
  farm->setConfigurationEqualToFarm(nullptr);
  EXPECT_THAT(namesOf(farm->locations()), ElementsAre("A"));
  farm->setConfigurationEqualToFarm(other.get());
  EXPECT_TRUE(*farm == *other);
  EXPECT_NE(farm->locations()[0], other->locations()[0]);
  EXPECT_EQ(farm->brokerClient(), client);
  farm->resetBrokerClient();
  EXPECT_NE(farm->brokerClient(), client);
  EXPECT_EQ(farm->brokerClientDispatchQueue(), queue);
}

TEST(FarmTest, LocationsAreRemovedAndReplacedByValue) {
  const auto farm = farmWithLocations({"A", "B", "A", "C"});
  farm->setDefaultLocation(farm->locations()[1].get());
  EXPECT_EQ(farm->defaultLocationIndex(), 1);
  farm->setDefaultLocation(locationNamed("unknown").get());
  EXPECT_EQ(farm->defaultLocationIndex(), 1);

  farm->removeLocation(nullptr);
  farm->removeLocation(farm->locations()[0].get());
  EXPECT_THAT(namesOf(farm->locations()), ElementsAre("B", "C"));
  EXPECT_EQ(farm->defaultLocationIndex(), 1) << "the number stays when an earlier one goes";
  farm->removeLocation(locationNamed("C").get());
  EXPECT_EQ(farm->defaultLocationIndex(), -1);

  farm->addLocation(locationNamed("C"));
  farm->setPrefferedLocationName("C");
  farm->replaceLocation(*locationNamed("unknown"), locationNamed("X"));
  farm->replaceLocation(*locationNamed("C"), locationNamed("D"));
  EXPECT_THAT(namesOf(farm->locations()), ElementsAre("B", "D"));
  EXPECT_EQ(farm->prefferedLocationName(), "D");
  farm->setDefaultLocation(nullptr);
  EXPECT_EQ(farm->defaultLocationIndex(), -1);
}

TEST(FarmTest, OnlyASingleLocationIsUsedUnasked) {
  const auto farm = farmWithLocations({"A"});
  EXPECT_EQ(farm->defaultLocation(), farm->locations()[0]);
  EXPECT_EQ(farm->prefferedLocationName(), "A");
  farm->addLocation(locationNamed("B"));
  EXPECT_EQ(farm->defaultLocation(), nullptr);
  EXPECT_EQ(farm->prefferedLocationName(), "A");
  EXPECT_EQ(farm->findLocationWithName("B"), farm->locations()[1]);
  EXPECT_EQ(farm->findLocationWithName("b"), nullptr);
  farm->locations()[0]->setName("Z");
  EXPECT_EQ(farm->prefferedLocationName(), "") << "it has no location any more";

  // Equality takes the name that the getter would give.
  const auto one = farmWithLocations({"A"});
  const auto two = farmWithLocations({"A"});
  one->setPrefferedLocationName("gone");
  EXPECT_TRUE(*one == *two);
}

TEST(FarmTest, TheClientLearnsHowALocationIsReached) {
  OvFarm farm;
  OvError error;
  EXPECT_FALSE(farm.configureProxySettingsForLocation(nullptr, &error));
  EXPECT_EQ(error.code, 8);
  EXPECT_FALSE(error.description.empty());
  EXPECT_FALSE(farm.configureProxySettingsForLocation(nullptr, nullptr));

  OvLocation location;
  location.setDoUseNatSupport(true);
  location.setSslGateway("gateway");
  location.setDoUseSsl(true);
  EXPECT_TRUE(farm.configureProxySettingsForLocation(&location, nullptr));
  EXPECT_TRUE(farm.brokerClient()->getUseAlternateIPAddress());
  EXPECT_EQ(farm.brokerClient()->getSslGateway(), "gateway");
  location.setDoUseSsl(false);
  EXPECT_TRUE(farm.configureProxySettingsForLocation(&location, nullptr));
  EXPECT_EQ(farm.brokerClient()->getSslGateway(), "");
}

}  // namespace

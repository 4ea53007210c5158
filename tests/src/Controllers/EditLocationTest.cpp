#include <climits>

#include <gmock/gmock.h>

#include "Controllers/EditLocationWindowController.h"

namespace {

using testing::ElementsAre;
using Sheet = EditLocationWindowController;

class EditLocationTest : public testing::Test, private EditLocationDelegate {
 protected:
  EditLocationTest() {
    location->setName("Harbour");
    location->setSslGateway("gate");
    location->setProtocol(7);
    location->setBrokers({"one", "two"});
    setup();
  }
  void setup(EditLocationMode mode = EditLocationMode::kEdit) { sheet.setupWithLocation(location, true, mode); }
  void editLocationDidFinishEditingLocation(const std::shared_ptr<OvLocation>& finished, bool shouldMakeDefault,
                                            EditLocationMode mode) override {
    reports.push_back((finished ? finished->name() : "none") + (shouldMakeDefault ? " default " : " ") +
                      std::to_string(static_cast<int>(mode)));
  }

  const std::shared_ptr<OvLocation> location = OvLocation::location();
  Sheet sheet{*this};
  std::vector<std::string> reports{};
};

TEST_F(EditLocationTest, OnlyDoneReachesTheLocation) {
  OvLocation expected = *location;
  for (const bool isDone : {false, true}) {
    setup();
    EXPECT_EQ(sheet.name() + sheet.port() + sheet.sslGateway(), "Harbour8080") << "SSL is off";
    EXPECT_TRUE(sheet.isDefault());
    EXPECT_EQ(sheet.protocolItem(), 1);
    sheet.setName("Depot");
    sheet.setDefault(!isDone);
    sheet.setProtocolItem(0);
    sheet.setPort(" 12x4");
    sheet.onUseSSLClick(true);
    sheet.setSslGateway("other gate");
    sheet.onEditBrokerListClick(Sheet::kAddBroker);
    EXPECT_EQ(*location, expected);
    if (isDone) sheet.onDoneButtonClick();
    sheet.onCancelButtonClick();
    sheet.onDoneButtonClick();  // nothing is edited any more
    EXPECT_EQ(*location == expected, !isDone);
  }
  expected.setName("Depot");
  expected.setProtocol(0);
  expected.setPort(12);
  expected.setDoUseSsl(true);
  expected.setSslGateway("other gate");
  expected.setBrokers({"one", "two", "0.0.0.0"});
  EXPECT_EQ(*location, expected);
  setup(EditLocationMode::kNew);
  EXPECT_EQ(sheet.sslGateway(), "other gate");
  sheet.setPort("99999999999");
  sheet.onUseSSLClick(false);
  EXPECT_FALSE(sheet.isSslGatewayEnabled());
  sheet.onDoneButtonClick();
  EXPECT_EQ(location->port(), INT_MAX);
  EXPECT_EQ(location->sslGateway(), "");
  EXPECT_THAT(reports, ElementsAre("none default 1", "Depot 1", "Depot default 0"));
}

TEST_F(EditLocationTest, BrokersAreAddedRemovedAndOvertyped) {
  sheet.setOnFocus([&](EditLocationFocus control) {
    if (control == EditLocationFocus::kNone) sheet.onBrokerEditFinish("as typed last");
  });
  sheet.onEditBrokerListClick(Sheet::kRemoveBroker);
  sheet.onBrokerEditFinish("nobody's");  // none is selected
  sheet.selectBroker(0);
  sheet.onBrokerEditFinish("");
  sheet.onEditBrokerListClick(Sheet::kRemoveBroker);
  sheet.selectBroker(1);  // which isn't there
  sheet.onEditBrokerListClick(Sheet::kRemoveBroker);
  sheet.onEditBrokerListClick(Sheet::kAddBroker);
  sheet.onBrokerEditFinish("three");
  EXPECT_THAT(sheet.brokers(), ElementsAre("two", "three"));
  for (int times = 0; times < 2; ++times) {
    sheet.selectBroker(0);
    sheet.onEditBrokerListClick(Sheet::kRemoveBroker);
  }
  sheet.onBrokerEditFinish("four");
  EXPECT_THAT(sheet.brokers(), ElementsAre("four"));
  sheet.selectBroker(0);
  sheet.onDoneButtonClick();
  EXPECT_THAT(location->brokers(), ElementsAre("as typed last")) << "what is being typed counts";
}

}  // namespace

#include <algorithm>

#include "Crypto/RC4StreamCipher.h"
#include "RawClient.h"

using namespace orvane::demo;
using testing::ElementsAre;

namespace {

FarmDescription smallFarm() {
  FarmDescription farm;
  farm.name = "Übersee";
  farm.users = {{"WORKS", "anna", "Größe1", {"office"}, {}},
                {"", "jo", "any", {"design"}, {}},
                {"WORKS", "late", "x", {}, Refusal{1330, "The password has expired."}}};
  farm.policies = {{"redirectaudio", "4"}, {"redirectdrives", "0"}};
  Application writer{.name = "writer", .shortcut = "Übersicht", .folder = "Büro"};
  writer.launch = {{"servername", "APP01"}, {"protocol", "1"}};
  Application ledger{.name = "給与計算", .path = "C:\\ledger.exe", .arguments = "-f \"a b\""};
  ledger.icon = std::make_shared<const Icon>(Icon{"AB", "CD"});
  Application design{.name = "cad"};
  design.groups = {"design"};
  Application broken{.name = "broken"};
  broken.refusal = Refusal{21, "The licence server is down."};
  farm.applications = {writer, ledger, design, broken};
  farm.sessions = {{{"domain", "WORKS"}, {"uname", "anna"}, {"sessionid", "7"}},
                   {{"domain", "WORKS"}, {"uname", "jo"}, {"sessionid", "8"}}};
  farm.tickets = {{"T-1", "WORKS", "anna"}};
  farm.configuration = Configuration{"{G}", "20", "config/farm.xml", {}};
  farm.connectorUpdate = ConnectorUpdate{"1.10.0", "get/connector.deb", 1};
  farm.files = {{"config/farm.xml", "text/xml", "<ServerFarms/>"}};
  return farm;
}

std::vector<std::string> applicationNames(httplib::Client& client, const std::string& cookie) {
  pugi::xml_document answer;
  std::vector<std::string> names;
  for (const auto element : post(client, cookieRequest("getapplicationlist", cookie), answer).children("application")) {
    names.emplace_back(element.child_value("name"));
  }
  return names;
}

class ConversationTest : public testing::TestWithParam<bool> {
 protected:
  DemoBroker broker_{smallFarm(), {.useTls = GetParam()}};
  httplib::Client client_ = clientOf(broker_);
  pugi::xml_document answer_;
};

INSTANTIATE_TEST_SUITE_P(Transports, ConversationTest, testing::Bool(),
                         [](const auto& transport) { return transport.param ? "Https" : "Http"; });

TEST_P(ConversationTest, ALogInLeadsToTheApplicationsOfTheUser) {
  const auto info = client_.Get("/gw/proxy/brokerinfo");
  ASSERT_TRUE(info);
  EXPECT_THAT(info->body, testing::HasSubstr("<capabilities>5</capabilities>"));

  const auto logIn = post(client_,
                          logInRequest("works", "Anna",
                                       "Gr\xF6\xDF"
                                       "e1"),
                          answer_, "/gw/PROXY");
  EXPECT_STREQ(logIn.name(), "authenticate-rsp");
  EXPECT_STREQ(logIn.child_value("redirectaudio"), "4");
  const std::string cookie = logIn.child_value("cookie");
  EXPECT_THAT(applicationNames(client_, cookie), ElementsAre("writer", "給与計算", "broken"));

  const auto launch = post(client_,
                           "<?xml version=\"1.0\" encoding=\"utf-8\"?>" +
                               cookieRequest("launchapplication", cookie, "<appname>給与計算</appname>"),
                           answer_);
  EXPECT_STREQ(launch.child_value("path"), "C:\\ledger.exe");
  EXPECT_STREQ(launch.child_value("arguments"), "-f \"a b\"");
  EXPECT_FALSE(launch.child("protocol"));
  const auto sessions = post(client_, cookieRequest("getsessionlist", cookie), answer_).children("session");
  ASSERT_EQ(std::distance(sessions.begin(), sessions.end()), 1);
  EXPECT_STREQ(sessions.begin()->child_value("sessionid"), "7");
  EXPECT_EQ(broker_.acceptedConnections(), 5u);
  EXPECT_EQ(broker_.requests("authenticate").at(0).field("username"), "Anna");
}

}  // namespace

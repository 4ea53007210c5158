// The messages that carry a log-in's cookie.

#include <regex>

#include "SDK/Broker/ScriptedBroker.h"
#include "Support/IconStrings.h"
#include "Support/OvWriteLog.h"
#include "Support/TemporaryFolder.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

const std::string kExpired = "<errorcode>1244</errorcode><errortext>log in</errortext>";

class SessionExchangesTest : public ScriptedBrokerTest {};

// Each exchange, by its message.
const std::pair<const char*, void (*)(OvBrokerClient&)> kExchanges[] = {
    {"getapplicationlist", [](OvBrokerClient& client) { client.getApplicationList(); }},
    {"getsessionlist", [](OvBrokerClient& client) { client.getSessionList(); }},
    {"getfarmproperties", [](OvBrokerClient& client) { client.getFarmProperties(); }},
    {"launchapplication", [](OvBrokerClient& client) { client.launchApplication("a"); }},
    {"getconnectorinfo", [](OvBrokerClient& client) { client.getConnectorInfo({}); }},
};

TEST_F(SessionExchangesTest, AnExpiredCookieIsReplacedUnseen) {
  for (const auto& [message, exchange] : kExchanges) {
    ScriptedBroker broker;
    broker.configure(client_);
    broker.respond("authenticate", "<cookie>c1</cookie>");
    broker.respond("authenticate", "<cookie>c2</cookie>");
    const std::string name = message;
    broker.respond(name, kExpired);
    broker.respond(name);
    EXPECT_EQ(errorOf([&] { exchange(client_); }), "none") << name;
    EXPECT_THAT(broker.messages(), ElementsAre("authenticate", name, "authenticate", name));
    EXPECT_THAT(broker.lastBody(), testing::StartsWith("<" + name + "-req><cookie>c2</cookie>"));
  }
}

TEST_F(SessionExchangesTest, WithTheLogInFallsWhatTheBrokerSaidItCanDo) {
  broker_.answer("brokerinfo", "<brokerinfo><capabilities>4</capabilities></brokerinfo>");
  broker_.respond("getfarmproperties", kExpired);
  broker_.respond("getfarmproperties");
  client_.getBrokerInfo();
  client_.getFarmProperties();
  EXPECT_THAT(broker_.server().requests().at(2).body, testing::StartsWith("<?xml "));
  EXPECT_THAT(broker_.lastBody(), testing::StartsWith("<getfarmproperties-req>"));
}

TEST_F(SessionExchangesTest, AFailedSendLooksForAnotherServer) {
  broker_.configure(client_, "a,b");
  broker_.answerWith("a:getfarmproperties",
                     {.body = std::string(1000, 'x'), .delivery = HttpTestServer::Delivery::kCut});
  broker_.respond("a:authenticate", "<cookie>c</cookie>");
  broker_.answer("a:authenticate", "");
  broker_.respond("b:getfarmproperties", "<farmname>F</farmname>");
  client_.getFarmProperties();
  EXPECT_EQ(client_.getFarmName(), "F");
  EXPECT_THAT(broker_.messages(), ElementsAre("a:authenticate", "a:getfarmproperties", "a:authenticate",
                                              "b:authenticate", "b:getfarmproperties"));
}

TEST_F(SessionExchangesTest, ErrorsOfTheBrokerAndWrongAnswersEndTheExchange) {
  for (const auto& [message, exchange] : kExchanges) {
    const std::string name = message;
    ScriptedBroker broker;
    broker.configure(client_);
    broker.respond(name, "<errorcode>42</errorcode>");
    broker.answer(name, "<other-rsp/>");
    broker.answer(name, "");
    EXPECT_EQ(errorOf([&] { exchange(client_); }), "42 ") << name;
    EXPECT_EQ(errorOf([&] { exchange(client_); }), "13 The data is invalid.") << name;
    EXPECT_EQ(errorOf([&] { exchange(client_); }), "13 The data is invalid.") << name;
  }
}

TEST_F(SessionExchangesTest, RequestsAndAnswersAreLoggedAtLevel5WithTheirOperation) {
  const TemporaryFolder folder;
  OvSetLogLevel(5);
  client_.setLogFile(folder.file("log"));
  client_.setPassword("open sesame");
  for (const auto& [message, exchange] : kExchanges) {
    broker_.respond(message);
    exchange(client_);
  }
  client_.setLogFile("");
  OvSetLogLevel(2);

  const std::string log = contentOf(folder.file("log"));
  const std::regex line(": OvBrokerClient::(\\w+, re(quest|sponse)=<[^>]+>)");
  std::vector<std::string> lines;
  for (std::sregex_iterator match(log.begin(), log.end(), line), end; match != end; ++match)
    lines.push_back((*match)[1]);
  EXPECT_THAT(
      lines,
      ElementsAre(
          "authenticate, request=<authenticate-req>", "authenticate, response=<authenticate-rsp>",
          "getApplicationList, request=<getapplicationlist-req>",
          "getApplicationList, response=<getapplicationlist-rsp>", "getSessionList, request=<getsessionlist-req>",
          "getSessionList, response=<getsessionlist-rsp>", "getFarmProperties, request=<getfarmproperties-req>",
          "getFarmProperties, response=<getfarmproperties-rsp>", "launchApplication, request=<launchapplication-req>",
          "launchApplication, response=<launchapplication-rsp>", "getConnectorInfo, request=<getconnectorinfo-req>",
          "getConnectorInfo, response=<getconnectorinfo-rsp>"));
  EXPECT_THAT(log, testing::Not(HasSubstr("open sesame")));
}

TEST_F(SessionExchangesTest, ABrokerThatNeverSettlesEndsAtTheBound) {
  broker_.respond("getfarmproperties", kExpired);
  EXPECT_EQ(errorOf([&] { client_.getFarmProperties(); }), "1244 log in");
  EXPECT_EQ(broker_.messages().size(), 2u * OvBrokerClient::kMaximumPasses);

  broker_.respond("getsessionlist", kExpired);
  broker_.answerWith("getsessionlist", {.status = 500});
  EXPECT_THAT(errorOf([&] { client_.getSessionList(); }), testing::StartsWith("1311 "));
}

TEST_F(SessionExchangesTest, ApplicationsAreListedAsTheyCome) {
  broker_.respond(
      "getapplicationlist",
      "<application><smallicon>0a&#0;b</smallicon><name>calc</name><shortcut>Rechner f\xFCr&#32;alle</shortcut>"
      "<path>C:\\calc.exe</path><arguments>-x &quot;y&quot;</arguments><workingdir>C:\\</workingdir>"
      "<foldername>Office\\Tools</foldername><largeicon>0A&amp;\xFC</largeicon><showcmd>3</showcmd>"
      "<apptype>2</apptype><desktopshortcutlocation>1</desktopshortcutlocation></application>"
      "<applications/><application/><application><name>calc</name><apptype/></application>"
      "<application><name>cut");
  const auto applications = client_.getApplicationList();
  ASSERT_EQ(applications.size(), 3u);
  const OvApplication& first = *applications.front();
  EXPECT_EQ(first.getName(), "calc");
  EXPECT_EQ(first.getShortcut(), "Rechner f\xC3\xBCr alle");
  EXPECT_EQ(first.getPath(), "C:\\calc.exe");
  EXPECT_EQ(first.getArguments(), "-x \"y\"");
  EXPECT_EQ(first.getWorkingDir(), "C:\\");
  EXPECT_EQ(first.getFolderName(), "Office\\Tools");
  EXPECT_EQ(first.getLargeIcon(), "0A&\xFC");  // not decoded
  EXPECT_EQ(first.getSmallIcon(), "0a");       // up to its zero, as any text
  EXPECT_EQ(first.getShowCmd(), 3);
  EXPECT_EQ(first.getAppType(), 2);
  EXPECT_EQ(first.getDesktopShortcutLocation(), 1);
  const OvApplication& empty = **std::next(applications.begin());
  EXPECT_EQ(empty.getName(), "");
  EXPECT_EQ(empty.getAppType(), 1);
  EXPECT_EQ(applications.back()->getName(), "calc");
  EXPECT_EQ(applications.back()->getAppType(), 0);
}

TEST_F(SessionExchangesTest, SessionsAreReadFromTheirOwnElement) {
  broker_.respond(
      "getsessionlist",
      "<domain>outside</domain><session><uname>u</uname><client>cl</client><server>s</server><compid>id</compid>"
      "<type>1</type><product>2</product><usage>3</usage><sessionid>4</sessionid><sessionstate>5</sessionstate>"
      "<os>os</os><sp>sp</sp><clientip>ip</clientip><connectortype>ct</connectortype>"
      "<connectorversion>cv</connectorversion><devicetype>dt</devicetype><websitename>w</websitename>"
      "<initialapp>app</initialapp><connectionstatus>6</connectionstatus><connectorlatency>7</connectorlatency>"
      "<connectorbandwidth>8</connectorbandwidth></session><session><domain>D</domain></session>");
  const auto sessions = client_.getSessionList();
  ASSERT_EQ(sessions.size(), 2u);
  const OvServerSession& s = *sessions.front();
  const std::string texts = s.getDomainName() + "|" + s.getUserName() + "|" + s.getClientName() + "|" +
                            s.getServerName() + "|" + s.getComputerId() + "|" + s.getOperatingSystem() + "|" +
                            s.getServicePack() + "|" + s.getClientIPAddress() + "|" + s.getConnectorType() + "|" +
                            s.getConnectorVersion() + "|" + s.getDeviceType() + "|" + s.getWebsiteName() + "|" +
                            s.getInitialApplication();
  EXPECT_EQ(texts, "|u|cl|s|id|os|sp|ip|ct|cv|dt|w|app");
  const int numbers[] = {s.getComputerType(),     s.getProductUsage(),      s.getUsage(),
                         s.getSessionId(),        s.getSessionState(),      s.getConnectionStatus(),
                         s.getConnectorLatency(), s.getConnectorBandwidth()};
  EXPECT_THAT(numbers, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
  EXPECT_EQ(sessions.back()->getDomainName(), "D");
}

TEST_F(SessionExchangesTest, EmptyListsAreAnswersAndAMissingFarmNameChangesNothing) {
  broker_.respond("getapplicationlist");
  broker_.respond("getsessionlist");
  broker_.respond("getfarmproperties", "<farmname>Farm</farmname>");
  broker_.respond("getfarmproperties");
  broker_.respond("getfarmproperties", "<farmname/>");
  EXPECT_TRUE(client_.getApplicationList().empty());
  EXPECT_TRUE(client_.getSessionList().empty());
  client_.getFarmProperties();
  client_.getFarmProperties();
  EXPECT_EQ(client_.getFarmName(), "Farm");
  client_.getFarmProperties();
  EXPECT_EQ(client_.getFarmName(), "");
}

TEST_F(SessionExchangesTest, ConnectorInformationNeedsALogInOnlyIfTheBrokerSaysSo) {
  broker_.answer("brokerinfo", "<brokerinfo><capabilities>1</capabilities></brokerinfo>");
  broker_.respond("getconnectorinfo");
  broker_.respond("getconnectorinfo", kExpired);
  broker_.respond("getconnectorinfo", "<config-status>2</config-status>");
  client_.getBrokerInfo();
  EXPECT_EQ(client_.getConnectorInfo({})->getConfigStatus(), 0);
  EXPECT_THAT(broker_.lastBody(), HasSubstr("<getconnectorinfo-req><cookie></cookie><connectorinfo>"));
  EXPECT_EQ(client_.getConnectorInfo({})->getConfigStatus(), CONFIG_STATUS_REQUIRED);
  EXPECT_THAT(broker_.messages(),
              ElementsAre("brokerinfo", "getconnectorinfo", "getconnectorinfo", "authenticate", "getconnectorinfo"));
}

TEST_F(SessionExchangesTest, ConnectorInformationTellsAllAndReadsAll) {
  broker_.configure(client_, "gw");
  client_.setConnectorType("Type");
  broker_.respond("getconnectorinfo",
                  "<config-status>3</config-status><config-path>x.xml</config-path><config-guid>g</config-guid>"
                  "<config-timestamp>t</config-timestamp><connector-status>2</connector-status>"
                  "<connector-options>1</connector-options><connector-min-version>9.9</connector-min-version>"
                  "<connector-install-location>http://other/setup</connector-install-location>");
  OvConnectorInfo info;
  info.setLaunchType("L");
  info.setConnectorOSType("O");
  info.setConnectorVersion("V");
  info.setDeviceName("N");
  info.setDeviceIP("I");
  info.setDeviceTimeZoneOffset("60");
  info.setConfigGUID("G");
  info.setConfigTimestamp("S");
  info.setBrowserType("B");
  const auto result = client_.getConnectorInfo(info);
  EXPECT_EQ(
      broker_.lastBody(),
      "<getconnectorinfo-req><cookie>c1</cookie><connectorinfo><launchtype>L</launchtype>"
      "<connectorostype>O</connectorostype><connectorversion>V</connectorversion><clientversion>6.0</clientversion>"
      "<connectortype>Type</connectortype><devicename>N</devicename><deviceip>I</deviceip>"
      "<devicetimezoneoffset>60</devicetimezoneoffset><configguid>G</configguid>"
      "<configtimestamp>S</configtimestamp><browsertype>B</browsertype><locale>en-us</locale></connectorinfo>"
      "</getconnectorinfo-req>");
  EXPECT_EQ(result->getConfigStatus(), CONFIG_STATUS_NOT_FOUND);
  EXPECT_EQ(result->getConfigPath(), "x.xml");
  EXPECT_EQ(result->getConfigFullPath(), broker_.server().url("/gw/proxy/x.xml"));
  EXPECT_EQ(result->getConfigGUID() + result->getConfigTimestamp(), "gt");
  EXPECT_EQ(result->getConnectorStatus(), CONNECTOR_STATUS_UPDATE_AVAILABLE);
  EXPECT_EQ(result->getConnectorOptions(), 1);
  EXPECT_EQ(result->getConnectorMinVersion(), "9.9");
  EXPECT_EQ(result->getConnectorInstallFullPath(), "http://other/setup");
}

TEST(Icons, AnIconBecomesABufferOfItsKindAndAlwaysAPngFile) {
  const TemporaryFolder folder;
  const std::string icon = icon_strings::make({8, 1, std::vector<uint8_t>(32, 0xff)}, 32);
  const auto beginningOf = [&](auto save) {
    unsigned char* buffer = nullptr;
    unsigned int size = 0;
    save(icon, &buffer, &size);
    const std::string beginning(buffer, buffer + std::min(size, 4u));
    free(buffer);
    return beginning;
  };
  const std::string png = "\x89PNG";
  EXPECT_EQ(beginningOf(OvBrokerClient::saveIconToICOBuffer), std::string("\0\0\1\0", 4));
  EXPECT_EQ(beginningOf(OvBrokerClient::saveIconToPNGBuffer), png);
  OvBrokerClient::saveIconToICOFile(icon, folder.file("ico"));
  OvBrokerClient::saveIconToPNGFile(icon, folder.file("png"));
  for (const char* name : {"ico", "png"}) EXPECT_THAT(contentOf(folder.file(name)), testing::StartsWith(png));
}

TEST(Icons, WhatIsNoIconIsRefusedInWords) {
  const TemporaryFolder folder;
  unsigned char* buffer = nullptr;
  unsigned int size = 0;
  const std::string noBuffer = "-1073282990 The buffer cannot be created.";
  EXPECT_EQ(errorOf([&] { OvBrokerClient::saveIconToICOBuffer("00", &buffer, &size); }), noBuffer);
  EXPECT_EQ(errorOf([&] { OvBrokerClient::saveIconToPNGBuffer("00", &buffer, &size); }), noBuffer);
  const std::string noFile = "-1073282990 The directory or file cannot be created.";
  EXPECT_EQ(errorOf([&] { OvBrokerClient::saveIconToICOFile("00", folder.file("i")); }), noFile);
  EXPECT_EQ(errorOf([&] { OvBrokerClient::saveIconToPNGFile("00", folder.file("i")); }), noFile);
  EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

}  // namespace

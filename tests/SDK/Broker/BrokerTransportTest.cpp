// Choosing a server, what a request looks like on the wire, and what the broker says of itself.

#include <algorithm>
#include <set>

#include "Broker/ServerEntry.h"
#include "SDK/Broker/ScriptedBroker.h"
#include "Support/OvWriteLog.h"
#include "Support/TemporaryFolder.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

const std::string kNoServers = "1311 There are currently no logon servers available to service the logon request.";
const std::string kInvalidData = "13 The data is invalid.";

class BrokerTransportTest : public ScriptedBrokerTest {};

TEST_F(BrokerTransportTest, TheServerListIsSplitAtCommasAndNothingElse) {
  client_.setServer(",a,,b c, d,a,");
  EXPECT_THAT(client_.buildServerList(), ElementsAre("a", "b c", " d", "a"));
  client_.setServer("");
  EXPECT_TRUE(client_.buildServerList().empty());
}

TEST_F(BrokerTransportTest, EachEntryIsTriedOnceAndInOrder) {
  broker_.configure(client_, "a,b,a");
  broker_.answerWith("a:authenticate", {.status = 500});
  broker_.answerWith("b:authenticate", {.body = std::string(1000, 'x'), .delivery = HttpTestServer::Delivery::kCut});
  EXPECT_EQ(errorOf([&] { client_.authenticate(); }), kNoServers);
  EXPECT_THAT(broker_.messages(), ElementsAre("a:authenticate", "b:authenticate"));
}

TEST_F(BrokerTransportTest, AnEmptyAnswerMovesOnButAWrongOneStopsTheWalk) {
  broker_.configure(client_, "a,b,c");
  broker_.answer("a:authenticate", "");
  broker_.answer("b:authenticate", "<html/>");
  EXPECT_EQ(errorOf([&] { client_.authenticate(); }), kInvalidData);
  EXPECT_THAT(broker_.messages(), ElementsAre("a:authenticate", "b:authenticate"));
}

TEST_F(BrokerTransportTest, ABrokersErrorStopsTheWalkToo) {
  broker_.configure(client_, "a,b");
  broker_.respond("a:authenticate", "<errorcode>1326</errorcode><errortext>No &amp; no</errortext>");
  EXPECT_EQ(errorOf([&] { client_.authenticate(); }), "1326 No & no");
  EXPECT_EQ(broker_.messages().size(), 1u);
}

TEST_F(BrokerTransportTest, AnEmptyListNeedsNoNetwork) {
  client_.setServer("");
  EXPECT_EQ(errorOf([&] { client_.getBrokerInfo(); }), kNoServers);
  client_.setConnectorLocale("de-de");
  EXPECT_THAT(errorOf([&] { client_.authenticate(); }), HasSubstr("keine Anmeldeserver"));
  EXPECT_TRUE(broker_.messages().empty());
}

TEST_F(BrokerTransportTest, RandomPicksReachEveryServerFirst) {
  std::set<std::string> first;
  // Fails once in 10^17 runs if all three are equally likely.
  for (int round = 0; round < 100; ++round) {
    broker_.configure(client_, "a,b,c");
    client_.setRandomize(true);
    client_.authenticate();
    first.insert(broker_.messages().back());
  }
  EXPECT_THAT(first, ElementsAre("a:authenticate", "b:authenticate", "c:authenticate"));
}

TEST_F(BrokerTransportTest, ARequestIsOneLineOfXmlUnderTheClientsHeaders) {
  broker_.answer("brokerinfo", "<brokerinfo><capabilities>4</capabilities></brokerinfo>");
  broker_.respond("getfarmproperties", "<farmname>M\xC3\xBCnchen</farmname>");

  client_.getFarmProperties();  // before anything is known, the single-byte form is spoken
  EXPECT_EQ(broker_.lastBody(), "<getfarmproperties-req><cookie>c1</cookie></getfarmproperties-req>");
  EXPECT_EQ(client_.getFarmName(), "M\xC3\x83\xC2\xBCnchen");
  const auto request = broker_.server().requests().back();
  EXPECT_EQ(request.get_header_value("User-Agent"), "OvClient");
  EXPECT_EQ(request.get_header_value("Content-Type"), "text/xml");

  broker_.configure(client_);
  client_.getBrokerInfo();
  client_.getFarmProperties();
  EXPECT_EQ(broker_.lastBody(),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
            "<getfarmproperties-req><cookie>c1</cookie></getfarmproperties-req>");
  EXPECT_EQ(client_.getFarmName(), "M\xC3\xBCnchen");
}

TEST_F(BrokerTransportTest, TextGoesOutAndComesBackInTheSingleByteForm) {
  client_.setUsername("M\xC3\xBCller <&>");
  broker_.respond("authenticate", "<errorcode>7</errorcode><errortext>f\xFCr M\xFCller</errortext>");
  EXPECT_EQ(errorOf([&] { client_.authenticate(); }), "7 f\xC3\xBCr M\xC3\xBCller");
  EXPECT_THAT(broker_.lastBody(), HasSubstr("<username>M\xFCller &lt;&amp;&gt;</username>"));
}

TEST_F(BrokerTransportTest, BrokerInfoTellsCapabilitiesAndTheActiveServer) {
  broker_.configure(client_, "a,b");
  broker_.answerWith("a:brokerinfo", {.status = 404});
  broker_.answer("b:brokerinfo", "<brokerinfo><capabilities>5</capabilities></brokerinfo>");
  client_.getBrokerInfo();
  EXPECT_THAT(broker_.messages(), ElementsAre("a:brokerinfo", "b:brokerinfo"));
  EXPECT_TRUE(client_.getGetConnectorInfoSupported());
  EXPECT_FALSE(client_.getGetConnectorInfoAuthenticationRequired());
  EXPECT_THAT(client_.constructFullPath("x"), testing::EndsWith("/b/proxy/x"));
}

TEST_F(BrokerTransportTest, BrokerInfoOfOtherForms) {
  const struct {
    const char* answer;
    const char* error;
    bool supported;
    bool required;
  } cases[] = {
      {"<brokerinfo/>", "none", false, true},
      {"<brokerinfo><capabilities/></brokerinfo>", "none", false, true},
      {"<brokerinfo><capabilities>0</capabilities></brokerinfo>", "none", false, false},
      {"<brokerinfo><capabilities>2</capabilities></brokerinfo>", "none", false, true},
      {"<brokerinfo><errorcode>5</errorcode><capabilities>1</capabilities></brokerinfo>", "none", true, false},
      {"<brokerinfo-rsp/>", "13 The data is invalid.", false, true},
  };
  for (const auto& row : cases) {
    ScriptedBroker broker;
    broker.answer("brokerinfo", row.answer);
    broker.configure(client_);
    EXPECT_EQ(errorOf([&] { client_.getBrokerInfo(); }), row.error) << row.answer;
    EXPECT_EQ(client_.getGetConnectorInfoSupported(), row.supported) << row.answer;
    EXPECT_EQ(client_.getGetConnectorInfoAuthenticationRequired(), row.required) << row.answer;
  }
}

TEST(ServerEntry, RelativePathsBecomeUrls) {
  const struct {
    const char* entry;
    bool useSSL;
    const char* path;
    const char* url;
  } cases[] = {
      {"host/broker", true, "config.xml", "https://host:443/broker/proxy/config.xml"},
      {"host", true, "config.xml", "https://host:443/config.xml"},
      {"host", false, "a/b", "http://host:443/a/b"},
      {"host/x/proxy", true, "c", "https://host:443/x/proxy/c"},
      {"host/proxy/x", true, "c", "https://host:443/proxy/x/c"},
      {"proxy.example/x", true, "c", "https://proxy.example:443/x/proxy/c"},
      {"host/x", true, "http://other/x.xml", "http://other/x.xml"},
      {"host", true, "://odd", "https://host:443/://odd"},
  };
  for (const auto& row : cases) EXPECT_EQ(orvane::ServerEntry(row.entry).urlOf(row.path, row.useSSL, 443), row.url);
}

TEST(ServerEntry, EntriesAndPathsMakeTheObjectName) {
  const struct {
    const char* entry;
    const char* path;
    const char* name;
  } cases[] = {
      {"host", nullptr, "/"},
      {"host", "/brokerinfo", "/brokerinfo"},
      {"host/gw", nullptr, "/gw/proxy"},
      {"host/gw", "/brokerinfo", "/gw/proxy/brokerinfo"},
      {"host/x/proxy", nullptr, "/x/proxy"},
      {"host/x/PROXY", "/brokerinfo", "/x/PROXY/brokerinfo"},
      {"host/proxy/x", nullptr, "/proxy/x/proxy"},
      {"host/myproxy", nullptr, "/myproxy/proxy"},
      {"host/", nullptr, "//proxy"},
  };
  for (const auto& row : cases) EXPECT_EQ(orvane::ServerEntry(row.entry).objectName(row.path), row.name) << row.entry;
}

TEST_F(BrokerTransportTest, AUrlBecomesServerPortAndProtocol) {
  const struct {
    const char* url;
    const char* server;
    int port;
    bool useSSL;
  } cases[] = {
      {"https://h", "h", 443, true},
      {"HTTP://h", "h", 80, false},
      {"http://h:8080/gw", "h/gw", 8080, false},
      {"https://h/gw/autodetect/more/autodetect", "h/gw", 443, true},
      {"https://h/autodetect", "h", 443, true},
      {"https://h/gw?query=1", "h/gw", 443, true},
  };
  for (const auto& row : cases) {
    client_.setURL(row.url);
    EXPECT_EQ(client_.getServer(), row.server) << row.url;
    EXPECT_EQ(client_.getTcpPort(), row.port) << row.url;
    EXPECT_EQ(client_.getUseSSL(), row.useSSL) << row.url;
  }
  for (const char* url : {"ftp://h", "h", "http://h:99999/"}) {
    EXPECT_EQ(errorOf([&] { client_.setURL(url); }), kInvalidData) << url;
    EXPECT_EQ(client_.getServer(), "h/gw") << url;
  }
}

TEST_F(BrokerTransportTest, OneConnectionServesAWholeConversation) {
  broker_.answer("brokerinfo", "<brokerinfo/>");
  broker_.respond("getfarmproperties");
  client_.getBrokerInfo();
  client_.getFarmProperties();
  client_.getFarmProperties();
  EXPECT_EQ(broker_.messages().size(), 4u);
  EXPECT_EQ(broker_.server().connections(), 1u);
}

TEST_F(BrokerTransportTest, AFailedSendIsLoggedAsAnErrorAndNoSecretIs) {
  const TemporaryFolder folder;
  client_.setLogFile(folder.file("log"));
  client_.setPassword("open sesame");
  broker_.answerWith("authenticate", {.status = 503});
  EXPECT_EQ(errorOf([&] { client_.authenticate(); }), kNoServers);
  client_.setLogFile("");
  const std::string log = contentOf(folder.file("log"));
  EXPECT_THAT(log, HasSubstr("OvBrokerClient::sendRequest, error sending request (errorCode=503, "
                             "errorText=error response received from HTTP server)"));
  EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 1);
}

}  // namespace

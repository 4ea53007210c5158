#include <array>
#include <cstring>

#include "Crypto/RC4StreamCipher.h"
#include "RawClient.h"
#include "Support/TemporaryFolder.h"

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
  EXPECT_EQ(broker_.acceptedConnections(), 1u);
  EXPECT_EQ(broker_.requests("authenticate").at(0).field("username"), "Anna");
}

TEST_P(ConversationTest, RefusesByCodeOrStatus) {
  const std::string cookie = logIn(client_, logInRequest("works", "anna", "Gr\xF6\xDF\x65\x31"));
  const struct {
    std::string request;
    const char* code;
  } cases[] = {
      {logInRequest("WORKS", "anna", "Gr\xF6\xDF\x65"), "1326"},
      {logInRequest("OTHER", "anna", "Gr\xF6\xDF\x65\x31"), "1326"},
      {logInRequest("WORKS", "nobody", ""), "1326"},
      {logInRequest("", "", "", "<anonymous>1</anonymous>"), "1326"},
      {logInRequest("WORKS", "late", "wrong"), "1330"},
      {cookieRequest("getfarmproperties", ""), "1244"},
      {cookieRequest("getapplicationlist", cookie + "0"), "1244"},
      {cookieRequest("launchapplication", "x"), "1244"},
      {cookieRequest("getsessionlist", "x"), "1244"},
      {cookieRequest("getconnectorinfo", "x"), "1244"},
      {cookieRequest("launchapplication", cookie, "<appname>cad</appname>"), "1168"},
      {cookieRequest("launchapplication", cookie, "<appname>broken</appname>"), "21"},
      {"<authenticateticket-req><ticket>00FF</ticket></authenticateticket-req>", "13"},
  };
  for (const auto& [request, code] : cases) {
    const auto answer = post(client_, request, answer_);
    EXPECT_STREQ(answer.child_value("errorcode"), code) << request;
    EXPECT_STRNE(answer.child_value("errortext"), "") << request;
    EXPECT_FALSE(answer.child("cookie")) << request;
  }
  EXPECT_EQ(client_.Post("/", "<authenticate-req><cookie>", "text/xml")->status, 400);
  EXPECT_EQ(client_.Post("/", "<reboot-req/>", "text/xml")->status, 400);
  EXPECT_EQ(client_.Post("/elsewhere", cookieRequest("getfarmproperties", cookie), "text/xml")->status, 404);
  EXPECT_EQ(client_.Get("/elsewhere/proxy/nothing")->status, 404);
  EXPECT_EQ(client_.Get("/" + std::string(8000, 'a'))->status, 414);
}

TEST_P(ConversationTest, CookiesExpireOnDemandAndByUse) {
  const std::string request = logInRequest("", "", "", "<anonymous>1</anonymous>");
  broker_.changeFarm([](FarmDescription& farm) {
    farm.anonymousAllowed = true;
    farm.cookieUses = 2;
    farm.applications[2].groups = {"anonymous"};
  });
  std::string cookie = logIn(client_, request);
  EXPECT_THAT(applicationNames(client_, cookie), testing::Contains("cad"));
  broker_.changeFarm([](FarmDescription& farm) { farm.applications.resize(1); });
  EXPECT_THAT(applicationNames(client_, cookie), ElementsAre("writer"));
  EXPECT_THAT(applicationNames(client_, cookie), ElementsAre());

  cookie = logIn(client_, request);
  broker_.expireCookies();
  EXPECT_STREQ(post(client_, cookieRequest("getfarmproperties", cookie), answer_).child_value("errorcode"), "1244");
}

TEST_P(ConversationTest, SingleByteTextLeavesAndComesAsLatin1) {
  broker_.changeFarm([](FarmDescription& farm) { farm.capabilities = std::nullopt; });
  EXPECT_EQ(client_.Get("/brokerinfo")->body, "<brokerinfo/>");
  const std::string cookie = logIn(client_, logInRequest("works", "anna", "Gr\xF6\xDF\x65\x31"));
  const std::string properties = client_.Post("/", cookieRequest("getfarmproperties", cookie), "text/xml")->body;
  EXPECT_THAT(properties, testing::HasSubstr("<farmname>\xDC"
                                             "bersee</farmname>"));
  EXPECT_THAT(properties, testing::Not(testing::HasSubstr("<?xml")));
  const auto launch = cookieRequest("launchapplication", cookie, "<appname>給与計算</appname>");
  EXPECT_STREQ(post(client_, launch, answer_).child_value("path"), "C:\\ledger.exe");
  EXPECT_EQ(broker_.requests("launchapplication").at(0).field("appname").size(), 2 * std::strlen("給与計算"));
}

TEST_P(ConversationTest, ConnectorInformationComparesConfigurationAndVersion) {
  const struct {
    const char *guid, *timestamp, *version, *configStatus, *connectorStatus;
  } cases[] = {{"", "", "1.9.9", "2", "2"},
               {"{G}", "20", "1.10", "1", "1"},
               {"{G}", "19", "1.10.0.1", "2", "1"},
               {"{H}", "20", "1.9.11", "2", "2"},
               {"{G}", "20", "", "1", "2"}};
  const auto ask = [&](const auto& row) {
    return post(client_,
                cookieRequest("getconnectorinfo", "",
                              std::string("<connectorinfo><connectorversion>") + row.version +
                                  "</connectorversion><configguid>" + row.guid + "</configguid><configtimestamp>" +
                                  row.timestamp + "</configtimestamp></connectorinfo>"),
                answer_);
  };
  for (const auto& row : cases) {
    const auto answer = ask(row);
    EXPECT_STREQ(answer.child_value("config-status"), row.configStatus) << row.guid << row.timestamp;
    EXPECT_STREQ(answer.child_value("connector-status"), row.connectorStatus) << row.version;
    EXPECT_STREQ(answer.child_value("connector-min-version"), "1.10.0");
    EXPECT_STREQ(answer.child_value("config-path"), "config/farm.xml");
  }
  broker_.changeFarm([](FarmDescription& farm) {
    farm.configuration.reset();
    farm.connectorUpdate.reset();
    farm.capabilities = kCapabilityConnectorInfo | kCapabilityConnectorInfoNeedsLogIn;
  });
  EXPECT_STREQ(ask(cases[0]).child_value("errorcode"), "1244");
  broker_.changeFarm([](FarmDescription& farm) { farm.capabilities = kCapabilityConnectorInfo; });
  EXPECT_STREQ(ask(cases[0]).child_value("config-status"), "3");
  EXPECT_STREQ(answer_.document_element().child_value("connector-status"), "1");
}

TEST_P(ConversationTest, ATicketIsExchangedForCredentials) {
  char text[257] = "";
  ASSERT_EQ(crypto_decrypt256(broker_.ticketString("T-1").c_str(), text, sizeof text), 1);
  EXPECT_EQ(text,
            std::string("Ov:") + (GetParam() ? "1" : "0") + ":127.0.0.1:" + std::to_string(broker_.port()) + ":T-1");

  std::array<unsigned char, 256> key;
  for (size_t i = 0; i < key.size(); ++i) key[i] = static_cast<unsigned char>(7 * i);
  const auto ask = [&](const std::string& message, const std::string& ticket) {
    std::string block = ticket + ":" + std::string(key.begin(), key.end());
    auto* const bytes = reinterpret_cast<unsigned char*>(block.data());
    RC4StreamCipher(crypto_get_scatter_table256(), 256).Encrypt(bytes, bytes, static_cast<long>(block.size()));
    std::string hexadecimal(2 * block.size() + 1, '\0');
    crypto_bintohex(bytes, block.size(), hexadecimal.data(), hexadecimal.size());
    return post(client_, "<" + message + "-req><ticket>" + hexadecimal.c_str() + "</ticket></" + message + "-req>",
                answer_);
  };
  EXPECT_STREQ(ask("validateticket", "T-2").child_value("errorcode"), "1312");
  EXPECT_FALSE(ask("validateticket", "T-1").child("ticket"));
  EXPECT_STREQ(answer_.document_element().child_value("errorcode"), "0");

  const std::string hexadecimal = ask("authenticateticket", "T-1").child_value("ticket");
  std::vector<unsigned char> credentials(hexadecimal.size() / 2);
  ASSERT_GT(crypto_hextobin(hexadecimal.c_str(), credentials.data(), credentials.size()), 0u);
  RC4StreamCipher(key.data(), 256).Decrypt(credentials.data(), credentials.data(), std::ssize(credentials));
  EXPECT_EQ(std::string(credentials.begin(), credentials.end()), "Ov:WORKS:anna:Größe1");
}

TEST_P(ConversationTest, FilesAreServedAtTheRootAndBehindProxy) {
  broker_.changeFarm([](FarmDescription& farm) {
    farm.files.push_back({.path = "filled", .content = "${host} ${port} ${https} ${other}", .fillIn = true});
    farm.files.push_back({.path = "a.ovl", .content = "full address:u:x\n", .encipher = true});
  });
  EXPECT_EQ(client_.Get("/config/farm.xml")->body, "<ServerFarms/>");
  EXPECT_EQ(client_.Get("/gw/proxy/config/farm.xml?x=1")->body, "<ServerFarms/>");
  EXPECT_EQ(client_.Get("/filled")->body,
            "127.0.0.1 " + std::to_string(broker_.port()) + (GetParam() ? " 1" : " 0") + " ${other}");
  std::string container = client_.Get("/a.ovl")->body;
  const size_t length = crypto_decrypt_buffer(reinterpret_cast<unsigned char*>(container.data()), container.size());
  EXPECT_EQ(container.substr(0, length), "full address:u:x\n");
}

TEST_P(ConversationTest, SeveralClientsAskWhileTheFarmChanges) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([this] {
      httplib::Client client = clientOf(broker_);
      const std::string cookie = logIn(client, logInRequest("", "jo", "any"));
      for (int round = 0; round < 10; ++round) {
        const std::vector<std::string> names = applicationNames(client, cookie);
        ASSERT_TRUE(names.size() == 4 || names == std::vector<std::string>{"new"}) << names.size();
      }
    });
  }
  for (int round = 0; round < 20; ++round) {
    broker_.changeFarm([&](FarmDescription& farm) {
      farm = smallFarm();
      if (round % 2 == 1) farm.applications = {{.name = "new"}};
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(broker_.requests("getapplicationlist").size(), 40u);
}

TEST(AddressTest, AnotherOfThisMachineHasItsOwnPortsAndOthersAreRefused) {
  const DemoBroker first(smallFarm());
  const DemoBroker second(smallFarm(), {.port = first.port(), .ip = "127.83.1.2"});
  EXPECT_EQ(second.url(), "http://127.83.1.2:" + std::to_string(first.port()));
  EXPECT_TRUE(httplib::Client(second.url()).Get("/brokerinfo"));
  for (const char* ip : {"0.0.0.0", "128.0.0.1", "localhost", ""}) {
    EXPECT_THROW(DemoBroker(smallFarm(), {.ip = ip}), std::runtime_error) << ip;
  }
}

TEST(CertificateTest, NamesTheHostsThatTheClientUses) {
  const DemoBroker broker(FarmDescription(), {.useTls = true, .certificateNames = {"127.0.0.1", "broker.example"}});
  const TemporaryFolder folder;
  writeFile(folder.file("ca.pem"), broker.certificatePem());
  for (const auto& [host, accepted] : {std::pair("127.0.0.1", true), std::pair("localhost", false)}) {
    httplib::SSLClient client(host, broker.port());
    client.set_address_family(AF_INET);
    client.set_ca_cert_path(folder.file("ca.pem").c_str());
    client.enable_server_certificate_verification(true);
    EXPECT_EQ(static_cast<bool>(client.Get("/brokerinfo")), accepted) << host;
  }
  EXPECT_THROW(DemoBroker(FarmDescription(), {.useTls = true, .certificateNames = {"a,DNS:b"}}), std::runtime_error);
  EXPECT_THROW(DemoBroker(FarmDescription(), {.port = broker.port()}), std::runtime_error);
}

}  // namespace

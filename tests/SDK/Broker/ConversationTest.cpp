// Whole conversations with a broker that keeps its side of the protocol, and with one that doesn't.

#include <cstdlib>
#include <future>
#include <map>
#include <regex>
#include <set>

#include <png.h>

#include "Crypto/crypto.h"
#include "Http/Downloads.h"
#include "SDK/Broker/ScriptedBroker.h"
#include "Support/BuiltInMessages.h"
#include "Support/HostLookup.h"
#include "Support/OvWriteLog.h"
#include "Support/TemporaryFolder.h"
#include "Support/TextCoding.h"
#include "demo-broker/DemoBroker.h"
#include "demo-broker/FarmFile.h"

using namespace orvane::demo;
using Kind = Fault::Kind;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr const char* kPassword = "Schlüssel-4711";
constexpr const char* kTicket = "HW-2024-0001";  // the sample farm's, for its user "demo"

FarmDescription farmWith(bool utf8) {
  FarmDescription farm = sampleFarm();
  farm.name = "Übersee";
  farm.capabilities = kCapabilityConnectorInfo | (utf8 ? kCapabilityUtf8 : 0);
  for (User& user : farm.users) user.password = kPassword;
  return farm;
}

void logOn(OvBrokerClient& client, const DemoBroker& broker, const std::string& path = "") {
  client.setURL(broker.url() + path);
  client.setDomain("HAFENWERK");
  client.setUsername("demo");
  client.setPassword(kPassword);
}

using Fields = std::map<std::string, std::string>;

// All that a record tells, by the names of its accessors; unset texts as empty ones.
Fields fieldsOf(const OvSettings& record) {
  Fields fields;
#define OVSETTINGS_STRING(stem, Name, initial) fields[#Name] = record.get##Name() ? record.get##Name() : "";
#define OVSETTINGS_BOOL(stem, Name, initial) fields[#Name] = std::to_string(record.get##Name());
#define OVSETTINGS_INT(stem, Name, initial) fields[#Name] = std::to_string(record.get##Name());
#include "Files/OvSettingsFields.def"
  return fields;
}

Fields savedAndLoaded(const OvSettings& record, const std::string& path) {
  OvSettings loaded;
  const bool done = record.saveOvlFile(path.c_str()) && loaded.loadOvlFile(path.c_str());
  return done && !std::filesystem::exists(path) ? fieldsOf(loaded) : Fields();
}

/// In UTF-8 and in the single-byte form, over HTTP and HTTPS, at the root and below a path.
class BrokerConversation : public testing::TestWithParam<std::tuple<bool, bool, std::string>> {
 protected:
  // A text of the farm after its way over the wire. A single-byte one brings each byte of what it lacks as a character.
  static std::string received(const std::string& text) {
    return utf8() ? text : orvane::cp1252ToUtf8(orvane::utf8ToCp1252(text));
  }
  static bool utf8() { return std::get<0>(GetParam()); }
  static const std::string& path() { return std::get<2>(GetParam()); }

  const FarmDescription farm_ = farmWith(utf8());
  DemoBroker broker_{farm_, {.useTls = std::get<1>(GetParam())}};
  OvBrokerClient client_;
};

INSTANTIATE_TEST_SUITE_P(Wires, BrokerConversation,
                         testing::Combine(testing::Bool(), testing::Bool(),
                                          testing::Values(std::string(), std::string("/gw"))),
                         [](const auto& wire) {
                           return std::string(std::get<0>(wire.param) ? "Utf8" : "SingleByte") +
                                  (std::get<1>(wire.param) ? "Https" : "Http") +
                                  (std::get<2>(wire.param).empty() ? "AtTheRoot" : "BelowAPath");
                         });

TEST_P(BrokerConversation, FromTheCapabilitiesToTheLaunches) {
  logOn(client_, broker_, path());
  client_.getBrokerInfo();
  client_.authenticate();
  EXPECT_EQ(client_.getAudioRedirectionMode(), 1);
  EXPECT_TRUE(client_.getEnableFlashRedirectionPolicy());
  client_.getFarmProperties();
  EXPECT_EQ(client_.getFarmName(), farm_.name);

  const auto applications = client_.getApplicationList();
  ASSERT_EQ(applications.size(), farm_.applications.size());
  auto published = farm_.applications.begin();
  for (const auto& application : applications) {
    EXPECT_EQ(application->getName(), received(published->name));
    EXPECT_EQ(application->getShortcut(), published->shortcut);
    EXPECT_EQ(application->getFolderName(), published->folder);
    EXPECT_EQ(application->getAppType(), published->type);
    EXPECT_EQ(application->getLargeIcon(), published->icon->large);
    if (published->refusal) {
      EXPECT_EQ(errorOf([&] { client_.launchApplication(application->getName()); }),
                std::to_string(published->refusal->code) + " " + published->refusal->text);
    } else {
      const auto record = client_.launchApplication(application->getName());
      EXPECT_EQ(record->getServerName(), published->launch.at("servername"));
      EXPECT_THAT(record->getProgramFullPath(), HasSubstr(published->type == 2 ? "explorer.exe" : published->path));
    }
    ++published;
  }
  const auto sessions = client_.getSessionList();
  ASSERT_EQ(sessions.size(), farm_.sessions.size());
  EXPECT_EQ(sessions.back()->getInitialApplication(), "Übersicht");
  const auto info = client_.getConnectorInfo({});
  EXPECT_EQ(info->getConfigStatus(), CONFIG_STATUS_REQUIRED);

  EXPECT_EQ(broker_.requests("authenticate").size(), 1u);
  EXPECT_EQ(broker_.acceptedConnections(), 1u);
  const std::string target = path().empty() ? "/" : path() + "/proxy";
  for (const RecordedRequest& request : broker_.requests()) {
    if (request.method == "POST") {
      EXPECT_EQ(request.target, target);
      EXPECT_EQ(request.body.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"), utf8()) << request.message;
    } else {
      EXPECT_THAT(request.target, testing::StartsWith(target));
    }
  }
  const TemporaryFolder folder;
  EXPECT_TRUE(ovutils_download_url(info->getConfigFullPath().c_str(), folder.file("config.xml").c_str()));
  EXPECT_THAT(contentOf(folder.file("config.xml")), HasSubstr(std::to_string(broker_.port())));
}

TEST_P(BrokerConversation, ATicketStandsForTheCredentials) {
  client_.setURL(broker_.url() + path());
  client_.getBrokerInfo();
  EXPECT_EQ(errorOf([&] { client_.authenticateTicket(broker_.ticketString("other"), false); }),
            "1312 The ticket is unknown or has expired.");
  client_.authenticateTicket(broker_.ticketString(kTicket), true);
  EXPECT_EQ(client_.getUsername(), "");
  client_.authenticateTicket(broker_.ticketString(kTicket), false);
  EXPECT_EQ(client_.getDomain() + "\\" + client_.getUsername(), "HAFENWERK\\demo");
  EXPECT_EQ(client_.getPassword(), kPassword);
  EXPECT_EQ(client_.getApplicationList().size(), farm_.applications.size());
}

TEST_P(BrokerConversation, ACookieThatExpiresBetweenRequestsIsReplaced) {
  logOn(client_, broker_, path());
  client_.getFarmProperties();
  broker_.expireCookies();
  EXPECT_FALSE(client_.getApplicationList().empty());
  broker_.expireCookies();
  EXPECT_EQ(client_.launchApplication("writer")->getServerName(), std::string("APP01"));
  broker_.changeFarm([](FarmDescription& farm) { farm.cookieUses = 1; });
  broker_.expireCookies();
  EXPECT_EQ(client_.getSessionList().size(), 2u);
  EXPECT_EQ(client_.getSessionList().size(), 2u);
  EXPECT_EQ(broker_.requests("authenticate").size(), 5u);
}

const std::map<std::string, void (*)(OvBrokerClient&)> kOperations = {
    {"brokerinfo", [](OvBrokerClient& client) { client.getBrokerInfo(); }},
    {"authenticate", [](OvBrokerClient& client) { client.authenticate(); }},
    {"getapplicationlist", [](OvBrokerClient& client) { client.getApplicationList(); }},
    {"launchapplication", [](OvBrokerClient& client) { client.launchApplication("writer"); }},
};

class BrokerFaults : public testing::TestWithParam<bool> {
 protected:
  BrokerFaults() {
    broker_.changeFarm([](FarmDescription& farm) { farm.applications = {{.name = "writer"}}; });
    logOn(client_, broker_);
    client_.getBrokerInfo();
  }

  DemoBroker broker_{farmWith(true), {.useTls = GetParam()}};
  OvBrokerClient client_;
};

INSTANTIATE_TEST_SUITE_P(Transports, BrokerFaults, testing::Bool(),
                         [](const auto& transport) { return transport.param ? "Https" : "Http"; });

TEST_P(BrokerFaults, AreErrorsInWordsAndEndWithTheirCause) {
  using Requests = std::vector<std::string>;
  const Requests beforeLogIn = {"brokerinfo", "authenticate"};
  const Requests afterLogIn = {"getapplicationlist", "launchapplication"};
  const Requests all = {"brokerinfo", "authenticate", "getapplicationlist", "launchapplication"};
  const std::string none = "none";
  const std::string nobody = "1311 There are currently no logon servers available to service the logon request.";
  const std::string invalid = "13 The data is invalid.";
  const struct {
    Fault fault;
    Requests requests;
    std::string error;
  } cases[] = {
      {{.kind = Kind::kRefuse}, all, none},  // like a connection that was kept for too long
      {{.kind = Kind::kRefuse, .times = 0}, {"brokerinfo", "authenticate", "getapplicationlist"}, nobody},
      {{.kind = Kind::kCut, .number = 10}, beforeLogIn, nobody},
      {{.kind = Kind::kCut, .number = 10}, afterLogIn, none},
      {{.kind = Kind::kTrickle}, all, none},
      {{.kind = Kind::kStatus, .number = 503}, beforeLogIn, nobody},
      {{.kind = Kind::kStatus, .number = 503}, afterLogIn, none},
      {{.kind = Kind::kStatus, .number = 302, .text = "/"}, beforeLogIn, nobody},
      {{.kind = Kind::kEmptyBody}, beforeLogIn, nobody},
      {{.kind = Kind::kEmptyBody}, afterLogIn, invalid},
      {{.kind = Kind::kWrongRoot}, all, invalid},
      {{.kind = Kind::kErrorCode, .number = 1244, .text = "Nö"}, afterLogIn, none},
      {{.kind = Kind::kErrorCode, .times = 0, .number = 1244, .text = "Nö"}, afterLogIn, "1244 Nö"},
      {{.kind = Kind::kErrorCode, .number = 1244, .text = "Nö"}, {"authenticate"}, "1244 Nö"},
      {{.kind = Kind::kErrorCode, .number = 5}, {"authenticate", "getapplicationlist", "launchapplication"}, "5 "},
  };
  for (const auto& row : cases) {
    for (const std::string& request : row.requests) {
      client_.clearActiveState();
      client_.getBrokerInfo();
      Fault fault = row.fault;
      fault.request = request;
      broker_.addFault(fault);
      EXPECT_EQ(errorOf([&] { kOperations.at(request)(client_); }), row.error) << &row - cases << request;
      broker_.clearFaults();
      EXPECT_EQ(errorOf([&] { client_.getApplicationList(); }), none) << &row - cases << request;
    }
  }
}

TEST_P(BrokerFaults, AStalledAnswerIsWaitedFor) {
  broker_.addFault({.kind = Kind::kStall, .request = "getapplicationlist"});
  auto applications = std::async(std::launch::async, [this] { return client_.getApplicationList(); });
  // The request may have come and not yet stall: so release until it is through.
  while (applications.wait_for(std::chrono::milliseconds(1)) != std::future_status::ready) broker_.releaseStalled();
  EXPECT_EQ(applications.get().size(), 1u);
  EXPECT_EQ(broker_.requests("getapplicationlist").size(), 1u);
}

TEST(EndlessAnswer, IsGivenUp) {
  DemoBroker broker(farmWith(true));
  broker.addFault({.kind = Kind::kEndlessBody, .request = "authenticate"});
  OvBrokerClient client;
  logOn(client, broker);
  EXPECT_THAT(errorOf([&] { client.authenticate(); }), testing::StartsWith("1311 "));
  EXPECT_EQ(errorOf([&] { client.authenticate(); }), "none");
}

TEST(SampleFarm, EachIconBecomesAPngOfItsSize) {
  const DemoBroker broker(farmWith(true));
  OvBrokerClient client;
  logOn(client, broker);
  for (const auto& application : client.getApplicationList()) {
    for (const auto& [icon, side] : {std::pair(application->getLargeIcon(), 32u), {application->getSmallIcon(), 16u}}) {
      unsigned char* bytes = nullptr;
      unsigned int size = 0;
      OvBrokerClient::saveIconToPNGBuffer(icon, &bytes, &size);
      const std::unique_ptr<unsigned char, decltype(&free)> owner(bytes, &free);
      png_image image{};
      image.version = PNG_IMAGE_VERSION;
      ASSERT_TRUE(png_image_begin_read_from_memory(&image, bytes, size)) << application->getName();
      EXPECT_EQ(image.width, side);
      EXPECT_EQ(image.height, side);
      image.format = PNG_FORMAT_RGBA;
      std::vector<unsigned char> pixels(PNG_IMAGE_SIZE(image));
      ASSERT_TRUE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr)) << application->getName();
      EXPECT_THAT(pixels, testing::Contains(0xFF)) << "nothing is to be seen of " << application->getName();
    }
  }
}

TEST(SampleFarm, LaunchFilesKeepWhatTheBrokerSaid) {
  const DemoBroker broker(farmWith(true));
  const TemporaryFolder folder;
  OvBrokerClient client;
  logOn(client, broker);
  client.setEnableNetworkOptimization(true);
  client.setDesktopWidth(1280);
  client.getFarmProperties();
  for (const auto& application : client.getApplicationList()) {
    if (application->getName() == "profiler") continue;  // its launch is refused
    const auto record = client.launchApplication(application->getName());
    Fields expected = fieldsOf(*record);
    expected["SessionSharing"] = "1";  // no line of the file: the session program shares
    EXPECT_EQ(savedAndLoaded(*record, folder.file("launch.ovl")), expected) << application->getName();
  }
}

// All that a connector does with the library, as text.
std::string conversation(const DemoBroker& broker, const std::string& locale, const std::string& launchFile) {
  OvBrokerClient client;
  logOn(client, broker, "/gw");
  client.setConnectorLocale(locale);
  client.getBrokerInfo();
  client.authenticateTicket(broker.ticketString(kTicket), false);
  client.getFarmProperties();
  std::string said = client.getFarmName() + "|" + std::to_string(client.getSessionList().size());
  for (const auto& application : client.getApplicationList()) said += "|" + application->getShortcut();
  said += "|" + client.getConnectorInfo({})->getConfigGUID();
  for (const auto& [name, value] : savedAndLoaded(*client.launchApplication("uebersicht"), launchFile))
    said += "|" + value;

  char enciphered[2049] = {};
  char clear[1024] = {};
  crypto_encrypt1024(locale.c_str(), enciphered, sizeof enciphered);
  crypto_decrypt1024(enciphered, clear, sizeof clear);
  char address[64] = {};
  tcpGetHostByName("localhost", nullptr, 0, address, sizeof address);
  client.setServer("");
  return said + "|" + clear + "|" + address + "|" + errorOf([&] { client.getBrokerInfo(); }) + "|" +
         i18n_get_locale_string(locale.c_str(), kMessageAccessDenied);
}

TEST(ConcurrentConversations, TwoClientsOnTwoThreadsShareNothingButTheLog) {
  const TemporaryFolder folder;
  const std::string log = folder.file("log");
  const DemoBroker brokers[] = {{farmWith(true), {.useTls = true}}, DemoBroker(farmWith(false))};
  const std::string locales[] = {"de-de", "ja-jp"};
  std::string alone[2];
  for (size_t i = 0; i < 2; ++i) alone[i] = conversation(brokers[i], locales[i], folder.file("alone.ovl"));
  EXPECT_THAT(alone[0], HasSubstr("Anmeldeserver"));

  OvSetLogLevel(5);
  // First without the log, whose lock orders the threads and so hides races from ThreadSanitizer.
  for (const std::string& path : {std::string(), log}) {
    OvSetLogFile(path.c_str());
    std::vector<std::thread> threads;
    for (size_t i = 0; i < 2; ++i) {
      threads.emplace_back([&, i] {
        const std::string launchFile = folder.file(locales[i] + ".ovl");
        for (int round = 0; round < 3; ++round) EXPECT_EQ(conversation(brokers[i], locales[i], launchFile), alone[i]);
      });
    }
    for (std::thread& thread : threads) thread.join();
  }
  OvSetLogFile("");

  std::set<std::string> writers;
  std::ifstream file(log);
  const std::regex head("\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d: \\d+:(\\d+): .*");
  for (std::string line; std::getline(file, line);) {
    std::smatch match;
    const std::string begin = line.substr(0, 64);
    ASSERT_TRUE(std::regex_match(begin, match, head)) << begin;
    writers.insert(match[1]);
    for (const std::string& secret : {std::string(kPassword), orvane::utf8ToCp1252(kPassword), std::string(kTicket)})
      EXPECT_THAT(line, Not(HasSubstr(secret)));
  }
  EXPECT_EQ(writers.size(), 2u);
}

}  // namespace

#include <cstdlib>
#include <filesystem>
#include <future>
#include <thread>

#include "FlowFixture.h"
#include "Orchestration/BrokerControllerError.h"
#include "Orchestration/ConfigurationFileAddress.h"
#include "Support/DnsServerOfTest.h"
#include "Support/HttpTestServer.h"
#include "Support/RefusingPort.h"

namespace {

using orvane::demo::DemoBroker;
using orvane::demo::FarmDescription;
using orvane::demo::Fault;
using Texts = std::vector<std::string>;

const std::string kConfiguration =
    R"(<ServerFarms><Farm FarmName="Filed"><Location Number="1" ServerList="b1"/></Farm></ServerFarms>)";
constexpr const char* kStoredGuid = "{6C0B2A34-90C1-4E57-8D1B-5F2E7A9A4411}";

// All web traffic of this process goes through `port` of this machine, so that no name is ever looked up.
void useProxy(int port) {
  const std::string address = "http://127.0.0.1:" + std::to_string(port);
  for (const char* variable : {"http_proxy", "https_proxy"}) setenv(variable, address.c_str(), 1);
  for (const char* variable : {"no_proxy", "NO_PROXY"}) unsetenv(variable);
}

// Runs an auto-configuration to its end, whether it tells anything or not, and gives what the delegate was told.
Texts configure(FlowFixture& fixture, const std::string& input, const std::optional<std::string>& guid = std::nullopt,
                bool fromConfigOnly = false, std::promise<std::weak_ptr<PendingTask>>* promise = nullptr) {
  const size_t before = fixture.delegate->events().size();
  std::weak_ptr<PendingTask> running;
  {
    const auto task = fixture.controller->configureFarmFromURL(input, guid, fromConfigOnly, fixture.delegate);
    if (promise != nullptr) promise->set_value(task);
    running = task;
  }
  while (!running.expired()) fixture.mainQueue->pumpOne();  // the flow holds its token as long as it runs
  Texts events = fixture.delegate->events();
  events.erase(events.begin(), events.begin() + static_cast<std::ptrdiff_t>(before));
  return events;
}

TEST(FarmAutoConfigurationTest, TheBrokerComesFirstAndThenTheFile) {
  const Texts file = {"/config.xml"}, broker = {"brokerinfo"}, both = {"brokerinfo", "/config.xml"};
  const struct {
    std::string input;  // "$" is the broker's host and port
    std::optional<std::string> guid;
    bool fromConfigOnly;
    std::optional<int> capabilities;
    std::optional<std::string> content;  // of the file that the last request names
    Texts requests;
    std::string event;              // none for a task that is cancelled
    const char* cancelAt = "none";  // during which request that happens
  } cases[] = {
      {"http://$", std::nullopt, false, 1, kConfiguration, broker, "configured 2"},
      {" \t$/\n", std::nullopt, false, 3, kConfiguration, broker, "configured 2"},  // over HTTPS at first
      {"http://$", "{unknown}", false, 1, std::nullopt, broker, "configured 2"},
      {"http://$", kStoredGuid, false, 1, std::nullopt, broker, "configured 2 known"},
      {"http://$", "", false, 1, std::nullopt, broker, "configured 2 known"},  // the first farm without a GUID
      {"http://$", kStoredGuid, false, 4, std::nullopt, both, "not configured 7"},
      {"http://$", kStoredGuid, false, 4, kConfiguration, both, "configured 1"},
      {"http://$", std::nullopt, false, std::nullopt, std::nullopt, both, "not configured 7"},
      {"http://$", std::nullopt, false, std::nullopt, "<ServerFarms/>", both, "not configured 4"},
      {"http://$", std::nullopt, false, std::nullopt, "", both, "not configured 4"},
      {"http://$", std::nullopt, true, 1, kConfiguration, file, "configured 1"},
      {"$", std::nullopt, true, 1, "no XML", file, "not configured 4"},
      {"http://$", std::nullopt, true, 1, std::nullopt, file, "not configured 5"},
      {"http://$//x/./y/../z/?query#part", std::nullopt, true, 1, kConfiguration, {"/x/z/config.xml"}, "configured 1"},
      {"http://$/x/farm.xml", std::nullopt, false, 0, kConfiguration, {"brokerinfo", "/x/farm.xml"}, "configured 1"},
      {"http://$/x/farm.xml", std::nullopt, false, 1, kConfiguration, broker, "configured 2"},
      {"http://$/x/farm.xml", std::nullopt, true, 1, std::nullopt, {"/x/farm.xml"}, "not configured 5"},
      {"", std::nullopt, false, 1, std::nullopt, {}, "not configured 0"},
      {"://", std::nullopt, true, 1, std::nullopt, {}, "not configured 0"},
      {"http://127.0.0.1:65536", std::nullopt, false, 1, std::nullopt, {}, "not configured 0"},
      {"http://$/\x01", std::nullopt, false, 1, std::nullopt, {}, "not configured 13"},
      {"http://$/" + std::string(2047, 'x'), std::nullopt, false, 1, std::nullopt, {}, "not configured 13"},
      {"ann@", std::nullopt, false, 1, std::nullopt, {}, "not configured 7"},
      {"ann@\x7F.test", std::nullopt, false, 1, std::nullopt, {}, "not configured 13"},
      {"ftp://$", std::nullopt, true, 1, std::nullopt, {}, "not configured 0"},
      {"httpx://$", std::nullopt, false, 1, std::nullopt, {}, "not configured 7"},
      {"http://$", kStoredGuid, false, 1, kConfiguration, broker, "", "brokerinfo"},
      {"http://$", std::nullopt, false, 0, kConfiguration, broker, "", "brokerinfo"},
      {"http://$", std::nullopt, false, 0, kConfiguration, both, "", "/config.xml"},
  };
  FlowFixture fixture;
  for (const char* guid : {kStoredGuid, ""}) {
    const auto farm = std::make_shared<OvFarm>();
    farm->setFarmDBGUID(guid);
    fixture.manager->addFarm(farm);
  }
  for (const auto& test : cases) {
    FarmDescription description{.capabilities = test.capabilities};
    if (test.content) description.files = {{.path = test.requests.back().substr(1), .content = *test.content}};
    std::promise<std::weak_ptr<PendingTask>> task;
    const DemoBroker demo(description, {.onRequest = [&](const auto& request) {
                            if ((request.message.empty() ? request.target : request.message) == test.cancelAt) {
                              task.get_future().get().lock()->cancel();
                            }
                          }});
    std::string input = test.input;
    const size_t place = input.find('$');
    if (place != std::string::npos) input.replace(place, 1, "127.0.0.1:" + std::to_string(demo.port()));
    fixture.delegate->farm.reset();
    const auto stored = fixture.manager->findFarmWithGUID(kStoredGuid);
    const auto client = stored->brokerClient();
    EXPECT_EQ(configure(fixture, input, test.guid, test.fromConfigOnly, &task),
              test.event.empty() ? Texts{} : Texts{test.event})
        << input;
    EXPECT_EQ(FlowFixture::requestsOf(demo), test.requests) << input;
    EXPECT_EQ(stored->brokerClient() != client, test.event == "configured 2 known" && test.guid == kStoredGuid);
    if (test.event.empty()) continue;

    const std::shared_ptr<OvFarm> farm = fixture.delegate->farm;
    if (test.event.starts_with("not")) {
      const int code = fixture.delegate->error.code;
      EXPECT_EQ(fixture.delegate->error.description,
                getErrorForBrokerControllerErrorCode(code == 0 ? 13 : code).description);
    } else if (test.event == "configured 1") {
      EXPECT_EQ(farm->name(), "Filed");
    } else {
      EXPECT_EQ(farm->brokerClient()->getTcpPort(), demo.port());
      EXPECT_TRUE(farm->brokerClient()->getGetConnectorInfoSupported());
      EXPECT_EQ(fixture.manager->findFarmWithGUID(test.guid.value_or("none")) == farm, test.event.ends_with("known"));
      EXPECT_NE(farm->serverCreated(), test.event.ends_with("known"));
    }
  }
}

TEST(FarmAutoConfigurationTest, AStoredFarmThatIsBusyHoldsNothingUp) {
  const DemoBroker broker(FarmDescription{});
  FlowFixture fixture;
  const auto farm = std::make_shared<OvFarm>();
  farm->setFarmDBGUID(kStoredGuid);
  fixture.manager->addFarm(farm);
  std::promise<void> busy;
  farm->brokerClientDispatchQueue()->post([end = busy.get_future().share()] { end.wait(); });
  EXPECT_EQ(configure(fixture, broker.url(), kStoredGuid), Texts{"configured 2 known"});
  busy.set_value();
}

TEST(FarmAutoConfigurationTest, AFileOfThisMachineIsReadWhenNothingIsDownloaded) {
  const RefusingPort nobody;
  useProxy(nobody.port());
  FlowFixture fixture;
  const std::string home = fixture.home.path();
  writeFile(home + "/a farm%.xml", kConfiguration);
  writeFile(home + "/bad.xml", "bad");
  writeFile(home + "/config.xml", kConfiguration);
  writeFile(home + "/large.xml", kConfiguration);
  std::filesystem::resize_file(home + "/large.xml", (16 << 20) + 1);
  std::filesystem::create_directory(home + "/folder.xml");
  std::filesystem::create_directory(home + "/farms");
  writeFile(home + "/farms/config.xml", kConfiguration);
  std::filesystem::current_path(home);
  const std::pair<std::string, std::string> cases[] = {
      {home + "/a farm%.xml", "configured 1"},
      {"~/a farm%.xml", "configured 1"},
      {"a farm%.xml", "configured 1"},
      {"FILE://" + home + "/a%20farm%25.xml", "configured 1"},
      {"file://host" + home + "/a%20farm%25.xml", "not configured 0"},
      {"file://" + home + "/a%00.xml", "not configured 7"},
      {home + "/bad.xml", "not configured 4"},
      {home + "/large.xml", "not configured 7"},
      {home + "/folder.xml", "not configured 7"},
      {home + "/none.xml", "not configured 7"},
      {home, "configured 1"},
      {"~", "configured 1"},
      {"farms", "not configured 7"},  // a host, not a folder
      {"http://host" + home + "/config.xml", "not configured 7"},
  };
  for (const auto& [input, event] : cases) EXPECT_EQ(configure(fixture, input), Texts{event}) << input;
  EXPECT_EQ(configure(fixture, home + "/none.xml", std::nullopt, true), Texts{"not configured 5"});
}

TEST(FarmAutoConfigurationTest, APathIsShortenedForTheConfigurationFile) {
  const std::pair<std::string, std::string> cases[] = {
      {"host", "host/config.xml"},
      {"host:8080/", "host:8080/config.xml"},
      {"host:", "host/config.xml"},
      {"HTTPS://Host//a///b/", "HTTPS://Host/a/b/config.xml"},
      {"http://host/a/./b/../../../c/..", "http://host/config.xml"},
      {"host/..a/.b/c...?d/e", "host/..a/.b/c.../config.xml"},
      {"http://host/a#b/c", "http://host/a/config.xml"},
      {"http://host//a/../x.xml", "http://host//a/../x.xml"},
      {"host/x.XML", "host/x.XML/config.xml"},
      {"/?x", ""},
  };
  for (const auto& [input, address] : cases) EXPECT_EQ(orvane::configurationFileAddress(input), address);
}

// The requests for a name, from the first on: broker over HTTPS and HTTP, then the file.
Texts attempts(const std::string& name, size_t first, size_t count) {
  const Texts all = {"CONNECT " + name + ":443", "GET http://" + name + ":8080/brokerinfo", "CONNECT " + name + ":443",
                     "GET http://" + name + "/config.xml"};
  return {all.begin() + static_cast<std::ptrdiff_t>(first), all.begin() + static_cast<std::ptrdiff_t>(first + count)};
}

Texts operator+(Texts left, const Texts& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

TEST(FarmAutoConfigurationTest, TheBrokersOfADomainAreTriedInOrder) {
  const std::string dead = "b1.example.test", live = "b2.example.test", bad = "b3.example.test";
  const DnsServerOfTest dns({"--srv-host=_orvane._tcp.example.test," + dead + ",1,10",
                             "--srv-host=_orvane._tcp.example.test," + live + ",1,20",
                             "--srv-host=_orvane._tcp.example.test," + bad + ",1,30",
                             "--srv-host=_orvane._tcp.dead.example.test," + bad + ",1,1",
                             "--srv-host=_orvane._tcp.dead.example.test," + dead + ",1,2",
                             "--srv-host=_orvane._tcp.file.example.test," + bad + ",1",
                             "--srv-host=_orvane._tcp.example.xml," + live + ",1",
                             "--srv-host=_orvane._tcp.none.example.test"});
  const struct {
    std::string input;
    bool fromConfigOnly;
    Texts events, requests;
    size_t cancelAt = 0;  // at the request of this number
  } cases[] = {
      {"ann@example.test", false, {"configured 2"}, attempts(dead, 0, 4) + attempts(live, 0, 2)},
      {"ann@example.test",
       true,
       {"not configured 5"},
       attempts(dead, 2, 2) + attempts(live, 2, 2) + attempts(bad, 2, 2)},
      {"ann@dead.example.test", false, {"not configured 7"}, attempts(bad, 0, 4) + attempts(dead, 0, 4)},
      {"ann@file.example.test", false, {"not configured 4"}, attempts(bad, 0, 4)},
      {"ann@none.example.test", false, {"not configured 5"}, {}},
      {"ann@unknown.example.test", false, {"not configured 5"}, {}},
      {"ann@example.xml", false, {"not configured 5"}, attempts(live, 2, 2)},  // ends like a file's name
      {"ann@example.test", false, {}, attempts(dead, 0, 2), 1},
      {"ann@example.test", false, {}, attempts(dead, 0, 3), 3},
      {"ann@example.test", false, {}, attempts(dead, 0, 4) + attempts(live, 0, 2), 6},
  };
  for (const auto& test : cases) {
    std::promise<std::weak_ptr<PendingTask>> task;
    std::atomic<size_t> count = 0;
    // A proxy, to which the names come instead of to the DNS; it opens no tunnels.
    HttpTestServer proxy([&](const HttpTestServer::Request& request) {
      if (++count == test.cancelAt) task.get_future().get().lock()->cancel();
      if (request.target.find(live + ":8080") != std::string::npos) {
        return HttpTestServer::Answer{.body = "<brokerinfo><capabilities>1</capabilities></brokerinfo>"};
      }
      if (request.target == "http://" + bad + "/config.xml" && test.input.find("file") != std::string::npos) {
        return HttpTestServer::Answer{.body = "bad"};
      }
      return HttpTestServer::Answer{.status = 503};
    });
    useProxy(proxy.port());
    FlowFixture fixture(dns.address());
    EXPECT_EQ(configure(fixture, test.input, "{GUID}", test.fromConfigOnly, &task), test.events);
    Texts requests;
    for (const auto& request : proxy.requests()) requests.push_back(request.method + " " + request.target);
    EXPECT_EQ(requests, test.requests) << test.input << test.cancelAt;
  }
}

TEST(FarmAutoConfigurationTest, AServiceSearchThatIsCancelledTellsNothing) {
  SilentDnsServer dns;
  FlowFixture fixture(dns.address());
  std::promise<std::weak_ptr<PendingTask>> task;
  std::thread user([&] {
    dns.waitForQuestion();
    task.get_future().get().lock()->cancel();
    dns.refuse();
  });
  EXPECT_EQ(configure(fixture, "ann@example.test", std::nullopt, false, &task), Texts{});
  user.join();
}

}  // namespace

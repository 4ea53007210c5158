#include <future>

#include "RawClient.h"
#include "demo-broker/FarmFile.h"

using namespace orvane::demo;
using Kind = Fault::Kind;

namespace {

constexpr const char kRequest[] = "/brokerinfo";

class FaultTest : public testing::TestWithParam<bool> {
 protected:
  httplib::Result get(const Fault& fault) {
    broker_.clearFaults();
    broker_.addFault(fault);
    return client_.Get(kRequest);
  }

  DemoBroker broker_{FarmDescription(), {.useTls = GetParam()}};
  httplib::Client client_ = clientOf(broker_);
  const std::string regular_ = client_.Get(kRequest)->body;
};

INSTANTIATE_TEST_SUITE_P(Transports, FaultTest, testing::Bool(),
                         [](const auto& transport) { return transport.param ? "Https" : "Http"; });

TEST_P(FaultTest, AnswersOtherThanTheRegularOne) {
  const struct {
    Fault fault;
    int status;
    std::string body;
  } cases[] = {
      {{.kind = Kind::kTrickle}, 200, regular_},
      {{.kind = Kind::kStatus, .number = 503}, 503, "Status 503\n"},
      {{.kind = Kind::kStatus, .number = 301, .text = "/there"}, 301, "Status 301\n"},
      {{.kind = Kind::kEmptyBody}, 200, ""},
      {{.kind = Kind::kWrongRoot}, 200, "<html><body>Welcome to the printer's web page.</body></html>"},
      {{.kind = Kind::kErrorCode, .number = 5, .text = "Nö"},
       200,
       "<?xml version=\"1.0\" encoding=\"UTF-8\"?><brokerinfo><errorcode>5</errorcode><errortext>Nö</errortext>"
       "</brokerinfo>"},
  };
  for (const auto& [fault, status, body] : cases) {
    const httplib::Result result = get(fault);
    ASSERT_TRUE(result) << status << body;
    EXPECT_EQ(result->status, status);
    EXPECT_EQ(result->body, body);
    EXPECT_EQ(broker_.acceptedConnections(), 1u) << "the connection outlives all of these";
    EXPECT_EQ(result->get_header_value("Location"), fault.kind == Kind::kStatus ? fault.text : "");
    const httplib::Result next = client_.Get(kRequest);
    ASSERT_TRUE(next) << status << body;
    EXPECT_EQ(next->body, regular_) << "the fault acts once";
  }
}

TEST_P(FaultTest, ConnectionsThatBreakOff) {
  EXPECT_EQ(get({.kind = Kind::kRefuse}).error(), httplib::Error::Read);

  broker_.addFault({.kind = Kind::kCut, .number = 10});
  std::string received;
  const auto collect = [&](const char* bytes, size_t size) {
    received.append(bytes, size);
    return true;
  };
  EXPECT_FALSE(client_.Get(kRequest, collect));
  EXPECT_EQ(received, regular_.substr(0, 10));

  broker_.addFault({.kind = Kind::kEndlessBody});
  size_t size = 0;
  EXPECT_FALSE(client_.Get(kRequest, [&](const char*, size_t count) { return (size += count) < 10'000'000; }));
  EXPECT_GE(size, 10'000'000u);

  // Last, since the client can't know that the connection ends behind the whole body.
  EXPECT_EQ(get({.kind = Kind::kCut, .number = 1 << 20})->body, regular_);
}

TEST_P(FaultTest, StalledRequestsWaitForTheirReleaseOrTheEnd) {
  broker_.addFault({.kind = Kind::kStall, .times = 0});
  const auto request = [this] { return clientOf(broker_).Get(kRequest); };
  std::future<httplib::Result> released = std::async(std::launch::async, request);
  while (broker_.requests().size() < 2) std::this_thread::yield();
  // The request may be recorded and not yet wait: so release until it is through.
  while (released.wait_for(std::chrono::milliseconds(1)) != std::future_status::ready) broker_.releaseStalled();
  EXPECT_EQ(released.get()->body, regular_);

  std::future<httplib::Result> stalled = std::async(std::launch::async, request);
  while (broker_.requests().size() < 3) std::this_thread::yield();
  EXPECT_EQ(stalled.wait_for(std::chrono::milliseconds(20)), std::future_status::timeout);
  const auto start = std::chrono::steady_clock::now();
  broker_.stop();
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  EXPECT_FALSE(stalled.get());
}

TEST(FaultListTest, FaultsOfAFarmFileActOnTheirRequestsOnly) {
  DemoBroker broker(parseFarm(R"(<farm name="x">
      <fault request="getfarmproperties" kind="error" errorcode="1244" errortext="over" nth="2"/>
      <fault request="/a" kind="status" status="500" times="2"/>
      <fault kind="status" status="501" nth="4" times="always"/></farm>)",
                              "x", {}));
  httplib::Client client = clientOf(broker);
  pugi::xml_document answer;
  const std::string message = cookieRequest("getfarmproperties", "c");
  EXPECT_STRNE(post(client, message, answer).child_value("errortext"), "over");
  EXPECT_STREQ(post(client, message, answer).child_value("errortext"), "over");
  std::vector<int> statuses;
  for (const char* path : {"/a", "/b", "/a", "/a"}) statuses.push_back(client.Get(path)->status);
  EXPECT_THAT(statuses, testing::ElementsAre(500, 501, 500, 501));
}

}  // namespace

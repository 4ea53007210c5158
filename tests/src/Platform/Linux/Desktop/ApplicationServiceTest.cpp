#include <QDBusMessage>
#include <QDBusPendingCall>
#include <csignal>
#include <future>
#include <sstream>

#include <sys/stat.h>

#include "Platform/Linux/Desktop/ApplicationService.h"
#include "QtApplicationOfTest.h"
#include "Support/SessionBusOfTest.h"

namespace {

using namespace std::chrono_literals;
using orvane::ApplicationService;
using testing::ElementsAre;
using testing::UnorderedElementsAre;
using Start = ApplicationService::Start;
using Words = std::vector<std::string>;

class ApplicationServiceTest : public testing::Test {
 protected:
  ApplicationServiceTest() {
    unsetenv("XDG_ACTIVATION_TOKEN");
    unsetenv("DESKTOP_STARTUP_ID");
  }
  ~ApplicationServiceTest() override { QDBusConnection::disconnectFromBus("test"); }

  static std::unique_ptr<ChildProcess> instance(Words words, int requests = 1) {
    words.insert(words.begin(), std::to_string(requests));
    return std::make_unique<ChildProcess>(ORVANE_APPLICATION_INSTANCE, words);
  }
  // What another start says, while this process is the instance.
  std::string otherStart(const Words& words) {
    const auto other = instance(words);
    bool hasEnded = false;
    std::thread waiting([&] {
      other->end();
      QMetaObject::invokeMethod(
          qApp, [&] { hasEnded = true; }, Qt::QueuedConnection);
    });
    EXPECT_TRUE(application_.until([&] { return hasEnded; }));
    waiting.join();
    return other->output();
  }
  Start start(const Words& words, std::chrono::milliseconds patience = ChildProcess::kPatience) {
    return service_.start(orvane::sortArguments(words, "/"), "own", patience);
  }
  void setHandler() {
    service_.setHandler({.activate = [this](const auto& token) { requests_.push_back("activate " + token); },
                         .open =
                             [this](const auto& addresses, const auto& token) {
                               std::string request = "open";
                               for (const std::string& address : addresses) request += " " + address;
                               requests_.push_back(request + " " + token);
                             },
                         .action = [this](const auto& name,
                                          const auto& token) { requests_.push_back("action " + name + " " + token); }});
  }
  Words takeRequests() { return std::exchange(requests_, {}); }

  SessionBusOfTest bus_{};
  const QtApplicationOfTest application_{};
  QDBusConnection connection_ = QDBusConnection::connectToBus(QString::fromStdString(bus_.address()), "test");
  Words requests_{};
  ApplicationService service_{connection_};
};

TEST_F(ApplicationServiceTest, TheFirstGetsAllRequestsInOrderAlsoThoseFromBeforeTheHandler) {
  ASSERT_EQ(start({"orvane:own", "--about"}), Start::kFirst);
  EXPECT_EQ(otherStart({"orvane:1", "x.ovl", "helperorvane:2"}), "forwarded\n");
  EXPECT_EQ(otherStart({"--background"}), "forwarded\n");
  setenv("DESKTOP_STARTUP_ID", "id_TIME1", 1);
  EXPECT_EQ(otherStart({}), "forwarded\n");
  setenv("XDG_ACTIVATION_TOKEN", "token", 1);
  EXPECT_EQ(otherStart({"--quit", "orvane:3"}), "forwarded\n");
  EXPECT_THAT(requests_, ElementsAre());
  setHandler();
  EXPECT_THAT(takeRequests(),
              ElementsAre("open orvane:own own", "action about own", "open orvane:1 file:///x.ovl helperorvane:2 ",
                          "activate id_TIME1", "open orvane:3 token", "action quit token"));
  EXPECT_EQ(otherStart({"orvane:4"}), "forwarded\n");
  EXPECT_TRUE(application_.until([&] { return !requests_.empty(); }));
  EXPECT_THAT(takeRequests(), ElementsAre("open orvane:4 token"));
}

TEST_F(ApplicationServiceTest, ARequestMayRunALoopInWhichTheNextIsHandedOver) {
  ASSERT_EQ(start({"orvane:1", "--quit"}), Start::kFirst);
  std::string order;
  QEventLoop loop;
  service_.setHandler({.activate = {},
                       .open = [&](const auto&, const auto&) { order += '(', loop.exec(), order += ')'; },
                       .action = [&](const auto&, const auto&) { order += 'q', loop.quit(); }});
  EXPECT_EQ(order, "(q)");
}

TEST_F(ApplicationServiceTest, OfManyStartsAtOnceOneIsTheFirstAndGetsWhatAllWant) {
  constexpr int kStarts = 8;
  std::vector<std::unique_ptr<ChildProcess>> starts;
  for (int i = 0; i < kStarts; ++i) starts.push_back(instance({"orvane:" + std::to_string(i)}, kStarts));
  Words said;
  for (const auto& process : starts) {
    EXPECT_EQ(process->end(), 0);
    std::istringstream lines(process->output());
    for (std::string line; std::getline(lines, line);) said.push_back(line);
  }
  Words expected(kStarts - 1, "forwarded");
  expected.emplace_back("first");
  for (int i = 0; i < kStarts; ++i) expected.push_back("orvane:" + std::to_string(i));
  EXPECT_THAT(said, testing::UnorderedElementsAreArray(expected));
}

TEST_F(ApplicationServiceTest, AnInstanceThatHangsIsToldOfAndOneThatDiesIsReplaced) {
  const auto owner = instance({});
  ASSERT_EQ(owner->line(), "first\n");
  owner->send(SIGSTOP);
  EXPECT_EQ(start({"orvane:1"}, 200ms), Start::kUnanswered);
  setHandler();
  EXPECT_THAT(takeRequests(), ElementsAre());
  auto killing = std::async(std::launch::async, [&] { owner->end(SIGKILL); });
  EXPECT_EQ(start({"orvane:2"}), Start::kFirst);
  killing.get();
  EXPECT_TRUE(application_.until([&] { return !requests_.empty(); }));
  EXPECT_THAT(takeRequests(), ElementsAre("open orvane:2 own"));
}

TEST_F(ApplicationServiceTest, OneThatHasStoppedIsReplaced) {
  ASSERT_EQ(start({}), Start::kFirst);
  setHandler();
  service_.stop();
  const auto next = instance({"orvane:1"});
  EXPECT_EQ(next->end(), 0);
  EXPECT_EQ(next->output(), "first\norvane:1\n");
  EXPECT_THAT(requests_, ElementsAre());
}

TEST_F(ApplicationServiceTest, StartedByTheBusItHasTheRequestThatItWasStartedFor) {
  const TemporaryFolder folder;
  const std::string pipe = folder.file("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  bus_.addService("example.orvane.Connector",
                  "/bin/sh -c \"exec " ORVANE_APPLICATION_INSTANCE " 2 --service > " + pipe + "\"");
  for (const char* method : {"ActivateAction", "Activate"}) {
    QDBusMessage call = QDBusMessage::createMethodCall("example.orvane.Connector", "/example/orvane/Connector",
                                                       "org.freedesktop.Application", method);
    const QVariantMap platformData{{"activation-token", "token"}};
    call.setArguments(method == std::string("Activate") ? QVariantList{platformData}
                                                        : QVariantList{"about", QVariantList{}, platformData});
    connection_.asyncCall(call);
  }
  EXPECT_EQ(contentOf(pipe), "first\naction about\nactivate token\n");
}

TEST_F(ApplicationServiceTest, TakesNothingForeignFromTheBus) {
  ASSERT_EQ(start({}), Start::kFirst);
  setHandler();
  const QVariantMap none, longToken{{"activation-token", QString(2000, 'x')}}, noText{{"activation-token", none}};
  const std::pair<const char*, QVariantList> calls[] = {
      {"Open", {QStringList{"http://a", "file://b/c", "", "--quit"}, none}},
      {"ActivateAction", {"reboot", QVariantList{}, none}},
      {"ActivateAction", {"", QVariantList{1, "x"}, none}},
      {"Open", {QStringList{"smb://a", "orvane:1"}, longToken}},
      {"Activate", {noText}},
  };
  const QDBusConnection other = QDBusConnection::connectToBus(QString::fromStdString(bus_.address()), "other");
  for (const auto& [method, values] : calls) {
    QDBusMessage call = QDBusMessage::createMethodCall("example.orvane.Connector", "/example/orvane/Connector",
                                                       "org.freedesktop.Application", method);
    call.setArguments(values);
    other.asyncCall(call);
  }
  EXPECT_TRUE(application_.until([&] { return requests_.size() == 2; }));
  EXPECT_THAT(takeRequests(), ElementsAre("open orvane:1 ", "activate "));
  QDBusConnection::disconnectFromBus("other");
}

TEST_F(ApplicationServiceTest, WithoutABusItIsAloneWithItsOwnArguments) {
  const auto alone = [&] {
    setHandler();
    return takeRequests();
  };
  ApplicationService service(QDBusConnection("none"));
  EXPECT_EQ(service.start(orvane::sortArguments(Words{"orvane:1"}, "/")), Start::kAlone);
  bus_.kill();
  EXPECT_EQ(start({"orvane:2"}), Start::kAlone);
  EXPECT_THAT(alone(), ElementsAre("open orvane:2 own"));
}

}  // namespace

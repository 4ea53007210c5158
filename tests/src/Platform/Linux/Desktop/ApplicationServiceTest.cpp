#include <QDBusMessage>
#include <QDBusPendingCall>
#include <csignal>
#include <future>

#include <sys/stat.h>

#include "QtApplicationOfTest.h"
#include "RecordedRequests.h"
#include "Support/SessionBusOfTest.h"

namespace {

using orvane::ApplicationService;
using testing::ElementsAre;
using Start = ApplicationService::Start;
using Words = std::vector<std::string>;

class ApplicationServiceTest : public testing::Test {
 protected:
  ~ApplicationServiceTest() override { QDBusConnection::disconnectFromBus("test"); }

  static std::unique_ptr<ChildProcess> instance(Words words, int requests = 1) {
    words.insert(words.begin(), std::to_string(requests));
    return std::make_unique<ChildProcess>(ORVANE_APPLICATION_INSTANCE, words);
  }
  // Another start, while this process is the instance. @return whether it says that it has handed its wishes over.
  bool forwards(const Words& words) {
    const auto other = instance(words);
    std::atomic<bool> hasEnded = false;
    std::thread waiting([&] { other->end(), hasEnded = true, QCoreApplication::eventDispatcher()->wakeUp(); });
    EXPECT_TRUE(application_.until([&] { return hasEnded.load(); }));
    waiting.join();
    return other->output() == "forwarded\n";
  }
  Start start(const Words& words, std::chrono::milliseconds patience = ChildProcess::kPatience) {
    return service_.start(orvane::sortArguments(words, "/"), "own", patience);
  }
  void setHandler() {
    service_.setHandler(recordedBy([this](const std::string& request) { requests_.push_back(request); }));
  }
  void call(const char* method, const QVariantList& values) {
    QDBusMessage call = QDBusMessage::createMethodCall("example.orvane.Connector", "/example/orvane/Connector",
                                                       "org.freedesktop.Application", method);
    call.setArguments(values);
    connection_.asyncCall(call);
  }

  SessionBusOfTest bus_{};
  const QtApplicationOfTest application_{};
  QDBusConnection connection_ = QDBusConnection::connectToBus(QString::fromStdString(bus_.address()), "test");
  Words requests_{};
  ApplicationService service_{connection_};
};

TEST_F(ApplicationServiceTest, TheFirstGetsAllRequestsInOrderAlsoThoseFromBeforeTheHandler) {
  unsetenv("XDG_ACTIVATION_TOKEN");
  setenv("DESKTOP_STARTUP_ID", "id", 1);
  ASSERT_EQ(start({"orvane:own", "--about"}), Start::kFirst);
  EXPECT_TRUE(forwards({"orvane:1", "x.ovl", "helperorvane:2"}));
  EXPECT_TRUE(forwards({"--background"}));
  setenv("XDG_ACTIVATION_TOKEN", "token", 1);
  EXPECT_TRUE(forwards({}));
  EXPECT_TRUE(forwards({"--quit", "orvane:3"}));
  EXPECT_THAT(requests_, ElementsAre());
  setHandler();
  EXPECT_THAT(requests_, ElementsAre("orvane:own own", "about own", "orvane:1 id", "file:///x.ovl id",
                                     "helperorvane:2 id", "activate token", "orvane:3 token", "quit token"));
  EXPECT_TRUE(forwards({"orvane:4"}));
  EXPECT_TRUE(application_.until([&] { return requests_.back() == "orvane:4 token"; }));
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
  unsetenv("XDG_ACTIVATION_TOKEN");
  unsetenv("DESKTOP_STARTUP_ID");
  Words said, expected{"first"};
  std::vector<std::unique_ptr<ChildProcess>> starts;
  for (const std::string link : {"orvane:1", "orvane:2", "orvane:3", "orvane:4", "orvane:5", "orvane:6"}) {
    starts.push_back(instance({link}, 6));
    expected.push_back(link + " ");
    if (starts.size() > 1) expected.emplace_back("forwarded");
  }
  for (const auto& process : starts) {
    for (std::string line; !(line = process->line()).empty();) said.push_back(line.substr(0, line.size() - 1));
  }
  EXPECT_THAT(said, testing::UnorderedElementsAreArray(expected));
}

TEST_F(ApplicationServiceTest, AnInstanceThatHangsIsToldOfAndOneThatDiesIsReplaced) {
  const auto owner = instance({});
  ASSERT_EQ(owner->line(), "first\n");
  owner->send(SIGSTOP);
  EXPECT_EQ(start({"orvane:1"}, std::chrono::milliseconds(200)), Start::kUnanswered);
  const auto killing = std::async(std::launch::async, [&] { owner->end(SIGKILL); });
  EXPECT_EQ(start({"orvane:2"}), Start::kFirst);
  setHandler();
  EXPECT_THAT(requests_, ElementsAre("orvane:2 own"));
  service_.stop();
  EXPECT_EQ(instance({"orvane:3"})->line(), "first\n") << "after one that has stopped";
}

TEST_F(ApplicationServiceTest, StartedByTheBusItHasTheRequestThatItWasStartedFor) {
  const TemporaryFolder folder;
  const std::string pipe = folder.file("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  bus_.addService("example.orvane.Connector",
                  "/bin/sh -c \"exec " ORVANE_APPLICATION_INSTANCE " 2 --service > " + pipe + "\"");
  call("ActivateAction", {"about", QVariantList{}, QVariantMap{{"desktop-startup-id", "token"}}});
  call("Activate", {QVariantMap{}});
  EXPECT_EQ(contentOf(pipe), "first\nabout token\nactivate \n");
}

TEST_F(ApplicationServiceTest, TakesNothingForeignFromTheBus) {
  ASSERT_EQ(start({}), Start::kFirst);
  setHandler();
  const QVariantMap none, longToken{{"activation-token", QString(2000, 'x')}}, noText{{"activation-token", none}};
  call("Open", {QStringList{"http://a", "file://b/c", "", "--quit"}, none});
  call("ActivateAction", {"reboot", QVariantList{1, "x"}, none});
  call("Open", {QStringList{"smb://a", "orvane:1"}, longToken});
  call("Activate", {noText});
  EXPECT_TRUE(application_.until([&] { return requests_.size() == 2; }));
  EXPECT_THAT(requests_, ElementsAre("orvane:1 ", "activate "));
}

TEST_F(ApplicationServiceTest, WithoutABusItIsAloneWithItsOwnArguments) {
  EXPECT_EQ(ApplicationService(QDBusConnection("none")).start({}), Start::kAlone);
  bus_.kill();
  EXPECT_EQ(start({"orvane:2"}), Start::kAlone);
  setHandler();
  EXPECT_THAT(requests_, ElementsAre("orvane:2 own"));
}

}  // namespace

#include <atomic>

#include <unistd.h>

#include "Files/OvSettings.h"
#include "Recorder.h"
#include "Sessions/OvSessionManager.h"
#include "Sessions/SharedSegment.h"
#include "TestRegistry.h"

namespace {

struct Launch {
  const char* servers;
  const char* domain = nullptr;
  const char* username = nullptr;
  bool sharing = true;
};

OvSettings settingsFor(const Launch& launch) {
  OvSettings settings;
  settings.setServerName(launch.servers);
  settings.setDomain(launch.domain);
  settings.setUsername(launch.username);
  settings.setSessionSharing(launch.sharing);
  return settings;
}

class OvSessionManagerTest : public testing::Test {
 protected:
  OvSessionManagerTest() { OvSessionManager::useRegistry(registry_.names); }
  uint32_t find(const Launch& launch) { return manager_->findSession(settingsFor(launch)); }
  uint32_t add(const Launch& launch, OvSessionObserver* observer = nullptr) {
    return manager_->addSession(settingsFor(launch), observer);
  }

  const TestRegistry registry_;
  Recorder recorder_;
  std::unique_ptr<OvSessionManager> manager_ = [this] {
    OvSessionManager::useRegistry(registry_.names);
    return std::make_unique<OvSessionManager>(&recorder_);
  }();
};

TEST_F(OvSessionManagerTest, ALaunchFindsTheFirstSessionThatFits) {
  const std::string longServer(300, 's');
  EXPECT_EQ(add({"B", "CORP", "ann", false}), 1u);
  EXPECT_EQ(add({"B", "CORP", "ann"}), 2u);
  EXPECT_EQ(add({"a,b", "CORP", "ben"}), 3u);
  EXPECT_EQ(add({"B"}), 4u);
  EXPECT_EQ(add({nullptr}), 5u);
  EXPECT_EQ(add({longServer.c_str()}), 6u);

  const std::string otherLongServer(299, 'S');  // equal in the 255 bytes that count
  const struct {
    Launch launch;
    uint32_t expected;
  } cases[] = {
      {{"a,b"}, 2},                      // the second item, and not the session that is not shared
      {{"b", "corp", "ANN"}, 2},         // case doesn't count
      {{"a"}, 3},                        // only the first item of its list is stored
      {{"b,a", nullptr, "ben"}, 3},      //
      {{",,b", "", ""}, 4},              // an empty domain is one, and empty items are none
      {{"b", "", "ann"}, 0},             //
      {{"b", "CORP", "benn"}, 0},        //
      {{"b", "CORP\xc3\x84"}, 0},        //
      {{"b", "CORP", "ann", false}, 0},  //
      {{nullptr, nullptr, nullptr}, 0},  //
      {{"", nullptr, nullptr}, 0},       // fits no session, not even the one without a server
      {{otherLongServer.c_str()}, 6},    //
      {{"b ", "CORP"}, 0},               // blanks belong to the item
  };
  for (const auto& [launch, expected] : cases) {
    EXPECT_EQ(find(launch), expected) << (launch.servers ? launch.servers : "null");
  }
}

TEST_F(OvSessionManagerTest, ASessionIsShownAsItWasAdded) {
  OvSettings settings = settingsFor({"a,b", "CORP", "ann"});
  settings.setSSLGateway("gateway");
  EXPECT_EQ(manager_->addSession(settings, nullptr), 1u);
  settings.setSSLGateway("");
  EXPECT_EQ(manager_->addSession(settings, nullptr), 2u);
  const auto list = manager_->getSessionList();
  ASSERT_EQ(list.size(), 2u);
  EXPECT_FALSE(list[1]->sslGateway);
  const auto info = manager_->getSessionInfo(1);
  manager_.reset();
  EXPECT_EQ(info->sessionId, 1u);
  EXPECT_TRUE(info->sessionSharing && info->sslGateway);
  EXPECT_EQ(info->server + "|" + info->domain + "|" + info->username, "a|CORP|ann");
}

TEST_F(OvSessionManagerTest, ATextThatDoesNotFitIsRefusedAndOneThatJustFitsIsKept) {
  const std::string text(1024, 'x');
  const auto ofLength = [&text](size_t length) { return text.c_str() + text.size() - length; };
  EXPECT_EQ(add({"a", ofLength(128), "ann"}), 0u);
  EXPECT_EQ(add({"a", "CORP", ofLength(130)}), 0u);
  const uint32_t id = add({"a", ofLength(127), ofLength(129)}, &recorder_);
  EXPECT_EQ(id, 1u);
  EXPECT_EQ(find({"a", ofLength(127), ofLength(129)}), id);
  EXPECT_EQ(find({"a", ofLength(128)}), 0u);
  EXPECT_EQ(recorder_.next(), "added 1");

  EXPECT_EQ(manager_->startApplication(id, ofLength(1024), ""), 0);
  EXPECT_EQ(manager_->startApplication(id, "", ofLength(1024)), 0);
  EXPECT_EQ(manager_->startApplication(id, ofLength(1023), ofLength(1023)), 1);
  const std::string longest(1023, 'x');
  EXPECT_EQ(recorder_.next(), "start 1 " + longest + " in " + longest);
  EXPECT_THAT(registry_.logged(),
              testing::ElementsAre("OvSessionManager::addSession: domain or user name too long",
                                   "OvSessionManager::addSession: domain or user name too long",
                                   "OvSessionManager::startApplication: program or working directory too long",
                                   "OvSessionManager::startApplication: program or working directory too long"));
}

TEST_F(OvSessionManagerTest, CommandsForAnOwnSessionReachItsObserverUntilItIsRemoved) {
  const uint32_t id = add({"a"}, &recorder_);
  const uint32_t alone = add({"a"}, nullptr);
  const std::string number = " " + std::to_string(id);
  EXPECT_EQ(manager_->logoffSession(id), 1);
  EXPECT_EQ(manager_->disconnectSession(id), 1);
  EXPECT_EQ(manager_->startApplication(id, nullptr, nullptr), 1);
  EXPECT_EQ(manager_->activateSessionView(id), 1);
  EXPECT_EQ(manager_->startApplication(alone, "p", "d"), 0);
  EXPECT_EQ(manager_->startApplication(999, "p", "d"), 0);
  EXPECT_EQ(manager_->removeSession(id), 1);
  EXPECT_EQ(manager_->removeSession(id), 0);
  EXPECT_EQ(manager_->activateSessionView(id), 0);
  EXPECT_EQ(manager_->getSessionInfo(id), nullptr);
  for (const std::string& line :
       {"added" + number, "added " + std::to_string(alone), "logoff" + number, "disconnect" + number,
        "start" + number + "  in ", "activate" + number, "removed" + number}) {
    EXPECT_EQ(recorder_.next(), line);
  }
}

TEST_F(OvSessionManagerTest, EveryCallIsTraced) {
  OvSetLogLevel(5);
  {
    const auto another = std::make_unique<OvSessionManager>();
    add({"a"});
    find({"a"});
    manager_->getSessionInfo(1);
    manager_->getSessionList();
    manager_->logoffSession(9);
    manager_->disconnectSession(9);
    manager_->activateSessionView(9);
    manager_->startApplication(9, "", "");
    manager_->removeSession(9);
  }
  std::vector<std::string> expected;
  for (const char* const name :
       {"OvSessionManager", "addSession", "findSession", "getSessionInfo", "getSessionList", "logoffSession",
        "disconnectSession", "activateSessionView", "startApplication", "removeSession", "~OvSessionManager"}) {
    expected.push_back("OvSessionManager::" + std::string(name) + ": called");
  }
  EXPECT_EQ(registry_.logged(), expected);
}

// What an outsider who knows nothing but the documented offsets sees.
TEST_F(OvSessionManagerTest, AnotherProgramReadsTheSegmentByItsOffsets) {
  OvSettings settings = settingsFor({"first", "CORP", "ann", false});
  settings.setSSLGateway("gateway");
  manager_->addSession(settings, nullptr);
  add({"gone"});
  add({"b,c", nullptr, "b\xc3\xa9n"}, &recorder_);
  manager_->removeSession(2);
  const std::string command = std::string("/usr/bin/python3 " ORVANE_SEGMENT_READER " ") + registry_.names.sharedMemory;
  FILE* const output = popen(command.c_str(), "r");
  std::string text;
  for (int byte = 0; (byte = fgetc(output)) != EOF;) text += static_cast<char>(byte);
  EXPECT_EQ(pclose(output), 0);
  const std::string own = std::to_string(getpid());
  EXPECT_EQ(text, "size 15768\ncounts 1 4\nprocesses " + own + "\nsession 0 " + own +
                      " 1 alone 0 1 first CORP ann\nsession 2 " + own + " 3 observed 1 0 b  b\xc3\xa9n\n");
}

// Destroys the manager that it observes from within a call.
struct Leaver : Recorder {
  std::unique_ptr<OvSessionManager> manager;
  void sessionAdded(uint32_t id) override {
    manager.reset();
    Recorder::sessionAdded(id);
  }
  void startApplication(uint32_t id, const char*, const char*) override { sessionAdded(id); }
};

TEST_F(OvSessionManagerTest, AnObserverMayDestroyItsManagerEvenTheLastOne) {
  Leaver leaver;
  leaver.manager = std::make_unique<OvSessionManager>(&leaver);
  add({"a"});
  EXPECT_EQ(leaver.next(), "added 1");
  add({"a"});
  leaver.manager = std::move(manager_);
  EXPECT_EQ(leaver.manager->addSession(settingsFor({"a"}), &leaver), 3u);
  EXPECT_EQ(leaver.manager->startApplication(3, "p", "d"), 1);
  EXPECT_EQ(leaver.next(), "added 3");
  EXPECT_FALSE(registry_.hasSegment());
}

TEST_F(OvSessionManagerTest, DestructionWaitsForAnObserverThatAnotherThreadIsIn) {
  auto observer = std::make_unique<SlowObserver>();
  auto watched = std::make_unique<OvSessionManager>(observer.get());
  std::thread adder([this] { add({"a"}); });
  observer->isIn.wait();
  observer->mayGo.count_down();
  watched.reset();
  observer->isGone = true;
  adder.join();
}

TEST_F(OvSessionManagerTest, ManagersAndSessionsComeAndGoOnManyThreads) {
  std::vector<std::thread> threads;
  std::atomic<int> wrong = 0;
  manager_.reset();
  for (int number = 0; number < 4; ++number) {
    threads.emplace_back([&wrong, number] {
      const std::string server = "s" + std::to_string(number);
      for (int round = 0; round < 40; ++round) {
        Recorder recorder;
        OvSessionManager manager(&recorder);
        const uint32_t id = manager.addSession(settingsFor({server.c_str()}), &recorder);
        if (id == 0 || manager.findSession(settingsFor({server.c_str()})) != id) ++wrong;
        if (!manager.startApplication(id, "p", "d") || !manager.removeSession(id)) ++wrong;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
  EXPECT_FALSE(registry_.hasSegment());
  EXPECT_EQ(registry_.socketCount(), 0u);
}

}  // namespace

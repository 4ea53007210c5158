#include <csignal>
#include <semaphore>

#include <sys/socket.h>
#include <unistd.h>

#include "Files/OvSettings.h"
#include "Peer.h"
#include "Recorder.h"
#include "Sessions/OvSessionManager.h"
#include "Sessions/OvSessionManagerImpl.h"
#include "Sessions/SocketAddress.h"
#include "Support/FileDescriptor.h"
#include "TestRegistry.h"

namespace {

class SessionProcessesTest : public testing::TestWithParam<int> {
 protected:
  SessionProcessesTest() { OvSessionManager::useRegistry(registry_.names); }

  std::unique_ptr<Peer> openPeer() const {
    auto peer = std::make_unique<Peer>(registry_.names);
    peer->ask("open");
    return peer;
  }
  // As a launcher does it: what can't be reached is removed, and the next match tried. 0: a session must be started.
  static uint32_t launch(const char* server) {
    OvSettings settings;
    settings.setServerName(server);
    OvSessionManager manager;
    for (uint32_t id = manager.findSession(settings); id != 0; id = manager.findSession(settings)) {
      if (manager.startApplication(id, "program", "folder")) return id;
      manager.removeSession(id);
    }
    return 0;
  }
  void expectNothingLeft() const {
    EXPECT_FALSE(registry_.hasSegment());
    EXPECT_EQ(registry_.socketCount(), 0u);
  }

  const TestRegistry registry_;
};

TEST_P(SessionProcessesTest, AllAddFindRemoveAndSendAtOnceAndNothingIsLost) {
  std::vector<std::unique_ptr<Peer>> peers;
  for (int number = 0; number < GetParam(); ++number) {
    peers.push_back(std::make_unique<Peer>(registry_.names));
    peers.back()->ask("quiet");
    if (number % 2 == 1) continue;  // opens and closes in the storm alone
    peers.back()->ask("open");
    EXPECT_NE(peers.back()->ask("add keep"), 0u);
  }
  uint32_t sent = 0, received = 0;
  for (const auto& peer : peers) peer->tell("storm 15");
  for (const auto& peer : peers) sent += peer->answer();
  for (const auto& peer : peers) received += peer->ask("close");
  EXPECT_EQ(sent, static_cast<uint32_t>(GetParam() * 15 * ((GetParam() + 1) / 2)));
  EXPECT_EQ(received, sent);
  expectNothingLeft();
}
INSTANTIATE_TEST_SUITE_P(Processes, SessionProcessesTest, testing::Values(2, 20));

TEST_F(SessionProcessesTest, CommandsAndNewsCrossProcesses) {
  const auto holder = openPeer();
  const uint32_t id = holder->ask("add a");
  const std::string number = " " + std::to_string(id);
  EXPECT_EQ(holder->event(), "added" + number);
  Recorder recorder;
  OvSessionManager manager(&recorder);
  EXPECT_EQ(manager.startApplication(id, "program", "folder"), 1);
  EXPECT_EQ(holder->event(), "start" + number + " program in folder");
  EXPECT_EQ(manager.activateSessionView(id), 1);
  EXPECT_EQ(holder->event(), "activate" + number);
  EXPECT_EQ(manager.disconnectSession(id), 1);
  EXPECT_EQ(holder->event(), "disconnect" + number);
  EXPECT_EQ(manager.logoffSession(id), 1);
  EXPECT_EQ(holder->event(), "logoff" + number);
  EXPECT_EQ(manager.removeSession(id), 1);
  EXPECT_EQ(holder->event(), "removed" + number);
  EXPECT_EQ(recorder.next(), "removed" + number);
  const uint32_t next = holder->ask("add b");
  EXPECT_EQ(recorder.next(), "added " + std::to_string(next));
  EXPECT_EQ(manager.getSessionInfo(next)->server, "b");
}

TEST_F(SessionProcessesTest, AnOpeningDuringTheLastClosingMeetsTheSameRegistryAsOthers) {
  const auto other = openPeer();
  OvSettings settings;
  settings.setServerName("a");
  for (int round = 0; round < 200; ++round) {
    other->tell("close");
    OvSessionManager manager;
    const uint32_t id = manager.addSession(settings, nullptr);
    other->answer();
    other->ask("open");
    ASSERT_EQ(other->ask("find a"), id) << round;
    manager.removeSession(id);
  }
}

TEST_F(SessionProcessesTest, TheLastManagerWaitsForTheListenerThreadAndAnObserverThereMayMakeAnother) {
  const auto other = openPeer();
  SlowObserver observer;
  auto manager = std::make_unique<OvSessionManager>(&observer);
  other->ask("add a");
  observer.isIn.wait();
  observer.mayGo.count_down();
  manager.reset();
  observer.isGone = true;
}

// Makes and gives up a manager of its own for each program.
class NestingObserver : public OvSessionObserver {
 public:
  std::binary_semaphore isIn{0};

 private:
  void logoffSession(uint32_t) override {}
  void disconnectSession(uint32_t) override {}
  void activateSessionView(uint32_t) override {}
  void startApplication(uint32_t, const char*, const char*) override {
    const OvSessionManager nested;
    isIn.release();
  }
};

TEST_F(SessionProcessesTest, TheLastManagerMayGoWhileTheListenerThreadGivesUpOneOfItsOwn) {
  const auto other = openPeer();
  OvSettings settings;
  settings.setServerName("a");
  for (int round = 0; round < 100; ++round) {
    NestingObserver observer;
    auto manager = std::make_unique<OvSessionManager>();
    const uint32_t id = manager->addSession(settings, &observer);
    other->tell("start " + std::to_string(id) + " program");
    observer.isIn.acquire();
    manager.reset();
    EXPECT_EQ(other->answer(), 1u);
    EXPECT_EQ(other->ask("remove " + std::to_string(id)), 1u);
  }
}

TEST_F(SessionProcessesTest, AKilledHolderLeavesTheRestWorkingAndALauncherFindsTheNextMatch) {
  const auto victim = openPeer();
  const auto survivor = openPeer();
  const auto other = openPeer();
  for (const auto& peer : {victim.get(), survivor.get(), other.get()}) peer->ask("quiet");
  const uint32_t lost = victim->ask("add a");
  const uint32_t found = survivor->ask("add a");
  survivor->tell("storm 20");
  other->tell("storm 20");
  {
    OvSessionManager manager;
    EXPECT_EQ(manager.startApplication(lost, "die", ""), 1);
  }
  const std::string path = registry_.names.socketPath(static_cast<uint32_t>(victim->processId()));
  EXPECT_TRUE(victim->wasKilled());
  EXPECT_EQ(survivor->answer(), 0u);
  EXPECT_EQ(other->answer(), 0u);
  EXPECT_EQ(launch("a"), found);
  EXPECT_THAT(registry_.logged(),
              testing::Contains("OvSessionManagerImpl::sendEvent: error connecting UNIX domain socket to '" + path +
                                "' (errno=" + std::to_string(ECONNREFUSED) + ")"));
  EXPECT_EQ(OvSessionManager().getSessionList().size(), 1u);
  EXPECT_EQ(survivor->ask("close"), 1u);
  EXPECT_EQ(launch("a"), 0u);
  EXPECT_THAT(OvSessionManager().getSessionList(), testing::IsEmpty());
}

TEST_F(SessionProcessesTest, AHolderMayGiveUpItsLastManagerWhenItIsAskedTo) {
  const auto holder = openPeer();
  const uint32_t id = holder->ask("add a");
  OvSessionManager manager;
  EXPECT_EQ(manager.startApplication(id, "leave", ""), 1);
  EXPECT_EQ(holder->event(), "added " + std::to_string(id));
  EXPECT_EQ(holder->event(), "start " + std::to_string(id) + " leave in ");
  holder->ask("open");
  EXPECT_EQ(manager.startApplication(holder->ask("add b"), "again", ""), 1);
  EXPECT_EQ(holder->event(), "added " + std::to_string(id + 1));
  EXPECT_EQ(holder->event(), "start " + std::to_string(id + 1) + " again in ");
}

TEST_F(SessionProcessesTest, ASemaphoreThatAKilledProcessHoldsStopsNobodyForEver) {
  const auto victim = openPeer();
  OvSettings settings;
  settings.setServerName("a");
  {
    OvSessionManager before;
    ASSERT_EQ(victim->ask("hold"), 1u);
    kill(victim->processId(), SIGKILL);
    EXPECT_TRUE(victim->wasKilled());
    EXPECT_EQ(before.addSession(settings, nullptr), 0u);
  }
  OvSessionManager().findSession(settings);
  const std::string reason = " error waiting for semaphore (errno=" + std::to_string(ETIMEDOUT) + ")";
  EXPECT_THAT(registry_.logged(), testing::IsSupersetOf({"OvSessionManagerImpl::addSession:" + reason,
                                                         "OvSessionManagerImpl::destroyContext:" + reason,
                                                         "OvSessionManagerImpl:" + reason}));
  EXPECT_EQ(registry_.socketCount(), 1u) << "the victim's";

  // The administrator's remedy.
  std::filesystem::remove("/dev/shm/sem." + registry_.names.semaphore.substr(1));
  std::filesystem::remove("/dev/shm" + registry_.names.sharedMemory);
  EXPECT_EQ(OvSessionManager().addSession(settings, nullptr), 1u);
}

TEST_F(SessionProcessesTest, AProcessThatTakesNoConnectionsIsNotWaitedForForEver) {
  const auto stuck = openPeer();
  kill(stuck->processId(), SIGSTOP);
  const orvane::SocketAddress address(registry_.names.socketPath(static_cast<uint32_t>(stuck->processId())));
  std::vector<std::unique_ptr<orvane::FileDescriptor>> pending;
  do {
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    pending.push_back(std::make_unique<orvane::FileDescriptor>(socket));
  } while (connect(pending.back()->number(), address.pointer(), address.size()) == 0);
  OvSettings settings;
  settings.setServerName("a");
  EXPECT_EQ(OvSessionManager().addSession(settings, nullptr), 1u);
  kill(stuck->processId(), SIGCONT);
}

TEST_F(SessionProcessesTest, OnlyTheSameUserIsHeardAndSentTo) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can become somebody else";
  Recorder recorder;
  OvSessionManagerImpl::ManagerObservers observers;
  observers.add(&recorder);
  auto manager = std::make_unique<OvSessionManagerImpl>(registry_.names, observers);
  // What keeps him out before he is looked at: the folder of the test and the mode of the socket.
  const std::string path = registry_.names.socketPath(OvSessionManagerImpl::getProcessId());
  std::filesystem::permissions(std::filesystem::path(path).parent_path(), std::filesystem::perms::all);
  std::filesystem::permissions(path, std::filesystem::perms::all);

  Peer stranger(registry_.names);
  EXPECT_EQ(stranger.ask("become 65534"), 1u);
  EXPECT_EQ(stranger.ask("send " + std::to_string(getpid())), 1u);
  // He may also wait at the path of a process that has died.
  EXPECT_EQ(stranger.ask("listen"), 1u);
  const auto strangersId = static_cast<uint32_t>(stranger.processId());
  EXPECT_EQ(manager->sendEvent(strangersId, {SessionAdded, 1, {}, {}}), 0);
  manager.reset();
  EXPECT_TRUE(recorder.isEmpty());
  EXPECT_THAT(registry_.logged(),
              testing::IsSupersetOf({std::string("OvSessionManagerImpl::listenerThread: event of another user refused"),
                                     "OvSessionManagerImpl::sendEvent: error connecting UNIX domain socket to '" +
                                         registry_.names.socketPath(strangersId) +
                                         "' (errno=" + std::to_string(EACCES) + ")"}));
}

}  // namespace

#include <csignal>
#include <cstring>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

#include "Recorder.h"
#include "Sessions/OvSessionManagerImpl.h"
#include "Sessions/SocketAddress.h"
#include "Support/ResourceLimit.h"
#include "TestRegistry.h"

namespace {

constexpr uid_t kSomebodyElse = 65534;

class OvSessionManagerImplTest : public testing::Test {
 protected:
  std::unique_ptr<OvSessionManagerImpl> opened() const {
    return std::make_unique<OvSessionManagerImpl>(registry_.names, observers_);
  }
  // The segment as another program would map it.
  OvSharedSegment& segment() {
    const int file = shm_open(registry_.names.sharedMemory.c_str(), O_RDWR, 0);
    void* const memory = mmap(nullptr, sizeof(OvSharedSegment), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    close(file);
    if (memory == MAP_FAILED) throw std::runtime_error("no segment");
    mapping_.reset(static_cast<OvSharedSegment*>(memory));
    return *mapping_;
  }
  void expectNotOpen(const std::string& message) const {
    const auto manager = opened();
    EXPECT_THAT(registry_.logged(), testing::Contains(message));
    EXPECT_EQ(manager->addProcess(1), 0);
    EXPECT_EQ(manager->removeProcess(1), 0);
    EXPECT_THAT(manager->getProcessList(), testing::IsEmpty());
    EXPECT_EQ(manager->addSession({}), 0u);
    EXPECT_EQ(manager->getSessionInfo(1), nullptr);
    EXPECT_EQ(manager->removeSession(1), 0);
    EXPECT_THAT(manager->getSessionList(), testing::IsEmpty());
    EXPECT_EQ(manager->sendEvent(1, {}), 0);
    EXPECT_THAT(registry_.logged(),
                testing::Contains("OvSessionManagerImpl::getSessionList: session registry is not open"));
  }

  struct Unmap {
    void operator()(OvSharedSegment* memory) const { munmap(memory, sizeof *memory); }
  };
  const TestRegistry registry_;
  mutable OvSessionManagerImpl::ManagerObservers observers_;
  std::unique_ptr<OvSharedSegment, Unmap> mapping_;
};

TEST_F(OvSessionManagerImplTest, TheSegmentLivesFromTheFirstOpeningToTheLastClosing) {
  auto first = opened();
  EXPECT_EQ(segment().refCount, 1u);
  EXPECT_EQ(first->addSession({}), 1u);
  // A second process counts; only its identifier is ours here.
  ++segment().refCount;
  first.reset();
  EXPECT_TRUE(registry_.hasSegment());
  EXPECT_EQ(segment().refCount, 1u);
  segment().refCount = 0;
  auto second = opened();
  EXPECT_EQ(segment().refCount, 1u);
  EXPECT_EQ(segment().nextSessionId, 2u);
  second.reset();
  EXPECT_FALSE(registry_.hasSegment());
  EXPECT_EQ(registry_.socketCount(), 0u);
}

TEST_F(OvSessionManagerImplTest, IdsAreNotReusedAndTheLowestRecordIs) {
  const auto manager = opened();
  for (uint32_t id = 1; id <= kSessionSlots; ++id) EXPECT_EQ(manager->addSession({}), id);
  EXPECT_EQ(manager->addSession({}), 0u);
  EXPECT_EQ(segment().nextSessionId, kSessionSlots + 1);
  EXPECT_EQ(manager->removeSession(7), 1);
  EXPECT_EQ(manager->removeSession(7), 0);
  EXPECT_EQ(manager->getSessionInfo(7), nullptr);
  EXPECT_EQ(manager->removeSession(0), 0);
  EXPECT_EQ(manager->addSession({}), kSessionSlots + 1);
  EXPECT_EQ(segment().sessions[6].sessionId, kSessionSlots + 1);

  // After the highest id come those that are free, from 1.
  EXPECT_EQ(manager->removeSession(3), 1);
  segment().nextSessionId = UINT32_MAX;
  EXPECT_EQ(manager->addSession({}), UINT32_MAX);
  EXPECT_EQ(manager->removeSession(4), 1);
  EXPECT_EQ(manager->addSession({}), 3u);
}

TEST_F(OvSessionManagerImplTest, ProcessesTakeTheLowestFreeSlotOfTwenty) {
  const auto manager = opened();
  for (uint32_t id = 101; id <= 120; ++id) EXPECT_EQ(manager->addProcess(id), 1);
  EXPECT_EQ(manager->addProcess(121), 0);
  EXPECT_EQ(manager->removeProcess(121), 0);
  EXPECT_EQ(manager->removeProcess(105), 1);
  EXPECT_EQ(manager->getProcessList().size(), 19u);
  EXPECT_EQ(manager->addProcess(101), 1);
  EXPECT_EQ(manager->getProcessList()[4], 101u);
  EXPECT_EQ(manager->removeProcess(101), 1);
  EXPECT_EQ(manager->getProcessList()[0], 102u);
}

TEST_F(OvSessionManagerImplTest, ARecordWhoseTextHasNoEndIsNeitherTakenNorGiven) {
  const auto manager = opened();
  EXPECT_EQ(manager->addSession({}), 1u);
  EXPECT_EQ(manager->addSession({}), 2u);
  memset(segment().sessions[0].domain, 'x', sizeof(OvSESSION_INFO::domain));
  EXPECT_EQ(manager->getSessionList().size(), 1u);
  EXPECT_EQ(manager->getSessionInfo(1), nullptr);
  OvSESSION_INFO record{};
  memset(record.username, 'x', sizeof record.username);
  EXPECT_EQ(manager->addSession(record), 0u);
  EXPECT_EQ(manager->removeSession(1), 1);
}

TEST_F(OvSessionManagerImplTest, OnlyTheHandleThatASessionWasGivenReachesItsObserver) {
  const auto manager = opened();
  Recorder recorder;
  const uint32_t id = manager->addSession({OvSessionManagerImpl::getProcessId(), 0, 0, 1, 0, {}, {}, {}}, &recorder);
  const OvSESSIONMANAGER_EVENT event{ActivateSessionView, id, {}, {}};
  OvSESSION_INFO& record = segment().sessions[0];
  const OvSESSION_INFO added = record;
  EXPECT_EQ(manager->fireEvent(event, false), 1);
  ++record.observer;
  EXPECT_EQ(manager->fireEvent(event, false), 0);
  record = {};  // as another process removes it
  EXPECT_EQ(manager->removeSession(id), 0);
  record = added;
  EXPECT_EQ(manager->fireEvent(event, false), 0);
}

TEST_F(OvSessionManagerImplTest, SemaphoreSegmentAndSocketAreWritableByTheirOwnerAlone) {
  const auto manager = opened();
  const auto permissions = [](const std::string& path) { return std::filesystem::status(path).permissions(); };
  const auto mask = std::filesystem::perms(0644);
  EXPECT_EQ(permissions("/dev/shm/sem." + registry_.names.semaphore.substr(1)), mask);
  EXPECT_EQ(permissions("/dev/shm" + registry_.names.sharedMemory), mask);
  EXPECT_EQ(permissions(registry_.names.socketPath(OvSessionManagerImpl::getProcessId())),
            std::filesystem::perms(0700));
}

TEST_F(OvSessionManagerImplTest, ASocketThatADeadProcessLeftIsReplaced) {
  const std::string path = registry_.names.socketPath(OvSessionManagerImpl::getProcessId());
  const orvane::SocketAddress address(path);
  const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(bind(socket, address.pointer(), address.size()), 0);
  close(socket);
  const auto manager = opened();
  EXPECT_EQ(manager->addProcess(1), 1);
}

TEST_F(OvSessionManagerImplTest, APathThatIsInUseFailsTheOpeningAndStaysAsItIs) {
  const std::string path = registry_.names.socketPath(OvSessionManagerImpl::getProcessId());
  const std::string message = "OvSessionManagerImpl: error binding UNIX domain socket to '" + path +
                              "' (errno=" + std::to_string(EADDRINUSE) + ")";
  writeFile(path, "not a socket");
  expectNotOpen(message);
  EXPECT_EQ(contentOf(path), "not a socket");
  EXPECT_FALSE(registry_.hasSegment());
  std::filesystem::remove(path);

  const auto holder = opened();
  expectNotOpen(message);
  EXPECT_EQ(registry_.socketCount(), 1u);
  EXPECT_EQ(segment().refCount, 1u);
}

TEST_F(OvSessionManagerImplTest, ASegmentThatCannotHaveItsSizeFailsTheOpening) {
  const ResourceLimit tooLittle(RLIMIT_FSIZE, 8192);
  const std::string reason = " shared memory segment (errno=" + std::to_string(EFBIG) + ")";
  expectNotOpen("OvSessionManagerImpl: error reserving" + reason);
  EXPECT_THAT(registry_.logged(), testing::Contains("OvSessionManagerImpl: error truncating" + reason));
  EXPECT_FALSE(registry_.hasSegment());
}

TEST_F(OvSessionManagerImplTest, WhatBelongsToAnotherUserIsNotOpened) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can give files away";
  opened();  // leaves the semaphore
  const std::string semaphore = "/dev/shm/sem." + registry_.names.semaphore.substr(1);
  ASSERT_EQ(chown(semaphore.c_str(), kSomebodyElse, kSomebodyElse), 0);
  expectNotOpen("OvSessionManagerImpl: error opening semaphore (errno=" + std::to_string(EACCES) + ")");
  ASSERT_EQ(chown(semaphore.c_str(), 0, 0), 0);

  const std::string memory = "/dev/shm" + registry_.names.sharedMemory;
  writeFile(memory, std::string(sizeof(OvSharedSegment), '\0'));
  ASSERT_EQ(chown(memory.c_str(), kSomebodyElse, kSomebodyElse), 0);
  expectNotOpen("OvSessionManagerImpl: error opening shared memory segment (errno=" + std::to_string(EACCES) + ")");
  EXPECT_TRUE(registry_.hasSegment());
}

}  // namespace

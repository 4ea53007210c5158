#include <cstring>

#include <sys/socket.h>
#include <unistd.h>

#include "Recorder.h"
#include "Sessions/OvSessionManagerImpl.h"
#include "Sessions/SocketAddress.h"
#include "Support/FileDescriptor.h"
#include "Support/ResourceLimit.h"
#include "TestRegistry.h"

namespace {

class SessionListenerTest : public testing::Test {
 protected:
  SessionListenerTest() { observers_.add(&recorder_); }

  // A connection that has sent the first `size` bytes of an event, as far as there are so many, and zeros.
  std::unique_ptr<orvane::FileDescriptor> connectionWith(const OvSESSIONMANAGER_EVENT& event, size_t size) {
    auto socket = std::make_unique<orvane::FileDescriptor>(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (connect(socket->number(), address_.pointer(), address_.size()) != 0) throw std::runtime_error("not connected");
    std::string bytes(size, '\0');
    memcpy(bytes.data(), &event, std::min(size, sizeof event));
    if (send(socket->number(), bytes.data(), size, MSG_NOSIGNAL) != static_cast<ssize_t>(size)) {
      throw std::runtime_error("not sent");
    }
    return socket;
  }
  void sendEvent(const OvSESSIONMANAGER_EVENT& event) { connectionWith(event, sizeof event); }

  const TestRegistry registry_;
  const orvane::SocketAddress address_{registry_.names.socketPath(OvSessionManagerImpl::getProcessId())};
  Recorder recorder_;
  OvSessionManagerImpl::ManagerObservers observers_;
  std::unique_ptr<OvSessionManagerImpl> manager_ = std::make_unique<OvSessionManagerImpl>(registry_.names, observers_);
};

TEST_F(SessionListenerTest, OnlyConnectionsThatBringAWholeEventAreHeardAndTheOthersAreLogged) {
  uint32_t id = 0;
  for (const size_t size : {0u, 1u, 2055u}) connectionWith({SessionAdded, ++id, {}, {}}, size);
  connectionWith({SessionAdded, 10, {}, {}}, 2056);
  connectionWith({SessionAdded, 11, {}, {}}, 2057);
  EXPECT_EQ(recorder_.next(), "added 10");
  EXPECT_EQ(recorder_.next(), "added 11");
  manager_.reset();
  const std::string start = "OvSessionManagerImpl::listenerThread: ";
  EXPECT_THAT(
      registry_.logged(),
      testing::ElementsAre(start + "error receiving event (bytesRead=0)", start + "error receiving event (bytesRead=1)",
                           start + "error receiving event (bytesRead=2055)",
                           start + "socket accept failed (errno=" + std::to_string(EINVAL) + ")"));
}

TEST_F(SessionListenerTest, SilentAndUnfinishedConnectionsHoldUpNobody) {
  std::vector<std::unique_ptr<orvane::FileDescriptor>> open;
  for (int number = 0; number < 100; ++number) open.push_back(connectionWith({}, number % 2));
  for (uint32_t id = 1; id <= 20; ++id) {
    sendEvent({SessionAdded, id, {}, {}});
    EXPECT_EQ(recorder_.next(), "added " + std::to_string(id));
  }
  EXPECT_GE(registry_.logged().size(), 36u) << "more than 64 are kept";
}

TEST_F(SessionListenerTest, AConnectionThatBringsNoEventInTimeIsClosed) {
  const auto connection = connectionWith({}, 7);
  char byte = 0;
  EXPECT_LE(recv(connection->number(), &byte, 1, 0), 0);
  EXPECT_THAT(registry_.logged(),
              testing::ElementsAre("OvSessionManagerImpl::listenerThread: error receiving event (bytesRead=7)"));
}

TEST_F(SessionListenerTest, AnEventMayComeInPieces) {
  const OvSESSIONMANAGER_EVENT event{SessionAdded, 5, {}, {}};
  const auto connection = connectionWith(event, 6);
  sendEvent({SessionAdded, 6, {}, {}});
  EXPECT_EQ(recorder_.next(), "added 6");
  const char* const rest = reinterpret_cast<const char*>(&event) + 6;
  ASSERT_EQ(send(connection->number(), rest, sizeof event - 6, MSG_NOSIGNAL), static_cast<ssize_t>(sizeof event - 6));
  EXPECT_EQ(recorder_.next(), "added 5");
}

TEST_F(SessionListenerTest, UnknownCodesAndSessionsAndTextsWithoutEndAreIgnored) {
  const uint32_t id = manager_->addSession({OvSessionManagerImpl::getProcessId(), 0, 0, 1, 0, {}, {}, {}}, &recorder_);
  OvSESSIONMANAGER_EVENT endless{StartApplicationEvent, id, {}, {}};
  memset(endless.program, 'x', sizeof endless.program);
  sendEvent(endless);
  for (const uint32_t code : {2u, 7u, UINT32_MAX}) sendEvent({code, id, {}, {}});
  for (const uint32_t code : {3u, 5u}) sendEvent({code, id + 1, {}, {}});
  sendEvent({ActivateSessionView, id, {}, {}});
  EXPECT_EQ(recorder_.next(), "activate " + std::to_string(id));
  sendEvent({SessionAdded, 4, {}, {}});
  EXPECT_EQ(recorder_.next(), "added 4");
}

TEST_F(SessionListenerTest, AShortageOfDescriptorsMakesTheProcessNeitherDeafNorHang) {
  constexpr rlim_t kNone = 3;  // below those in use, and enough to poll as many
  for (int round = 0; round < 5; ++round) {
    const orvane::FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const ResourceLimit none(RLIMIT_NOFILE, kNone);
    ASSERT_EQ(connect(socket.number(), address_.pointer(), address_.size()), 0);
    for (int turn = 0; turn < 5000; ++turn) std::this_thread::yield();  // so that the listener finds none
  }
  sendEvent({SessionAdded, 1, {}, {}});
  EXPECT_EQ(recorder_.next(), "added 1");
  const ResourceLimit none(RLIMIT_NOFILE, kNone);
  manager_.reset();
}

TEST_F(SessionListenerTest, WhatWasSentBeforeTheClosingIsStillHeard) {
  for (uint32_t id = 1; id <= 5; ++id) sendEvent({SessionAdded, id, {}, {}});
  manager_.reset();
  for (uint32_t id = 1; id <= 5; ++id) EXPECT_EQ(recorder_.next(), "added " + std::to_string(id));
}

}  // namespace

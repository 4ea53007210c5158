#include <csignal>
#include <cstdlib>
#include <future>

#include <sys/socket.h>
#include <sys/un.h>

#include "Platform/Linux/SecretService.h"
#include "Support/FileDescriptor.h"
#include "Support/OvWriteLog.h"
#include "Support/SecretServiceOfTest.h"

namespace {

using namespace std::chrono_literals;
using orvane::SecretService;
using Bytes = std::vector<uint8_t>;
using Prompter = SecretServiceOfTest::Prompter;
using Reading = orvane::SecretStore::Reading;

constexpr char kSecret[] = "an open secret";

class SecretServiceTest : public testing::Test {
 public:
  Reading reading(SecretService& store, const std::string& account = "key") {
    return store.load("Orvane", account).reading;
  }
  // What is read of the item if it is found.
  std::optional<Bytes> found(const std::string& account = "key") {
    const orvane::SecretStore::Item item = store_.load("Orvane", account);
    return item.reading == Reading::kFound ? std::optional(item.bytes) : std::nullopt;
  }
  bool save(SecretService& store, const Bytes& bytes = Bytes(std::begin(kSecret), std::end(kSecret))) {
    return store.save("Orvane", "key", bytes);
  }
  void startLockedWithItem(Prompter prompter) {
    desktop_.startOpen(prompter);
    ASSERT_TRUE(save(store_));
    desktop_.lock();
  }

  const TemporaryFolder folder_;
  SecretServiceOfTest desktop_;
  // Whatever waits for it in vain ends by something else.
  SecretService store_{{10min, 10min}};
};

TEST_F(SecretServiceTest, AnOutsiderReadsTheBytesAsTheyWereLastSaved) {
  desktop_.startOpen();
  for (const Bytes& bytes : {Bytes{'a', 0, 'b'}, Bytes{}, Bytes(5000, 'x'), Bytes{0, 0xff, '\n', 0}}) {
    ASSERT_TRUE(save(store_, bytes));
    EXPECT_EQ(found(), bytes);
  }
  ChildProcess outsider("/usr/bin/python3", {"-c", R"(
import secretstorage
collection = secretstorage.get_default_collection(secretstorage.dbus_init())
for item in collection.get_all_items():
    attributes = item.get_attributes()
    print(item.get_label(), item.get_secret(), attributes['service'], attributes['account'])
)"});
  EXPECT_EQ(outsider.end(), 0) << outsider.errors();
  EXPECT_EQ(outsider.output(), "Orvane: key b'\\x00\\xff\\n\\x00' Orvane key\n");
}

TEST_F(SecretServiceTest, ADesktopThatNeverKeptASecretHasNoneAndKeepsTheFirstWhereTheUserWants) {
  desktop_.startLocked(Prompter::kAnswering);
  EXPECT_EQ(reading(store_), Reading::kAbsent);
  desktop_.answerNextPrompt(std::nullopt);
  EXPECT_FALSE(save(store_));
  EXPECT_EQ(reading(store_), Reading::kAbsent);
  desktop_.answerNextPrompt("new password");
  EXPECT_TRUE(save(store_, {1}));
  EXPECT_EQ(found(), Bytes{1});
  EXPECT_EQ(reading(store_, "other"), Reading::kAbsent);
}

TEST_F(SecretServiceTest, ALockedCollectionWithoutTheItemIsUnreadableAndNobodyIsAsked) {
  startLockedWithItem(Prompter::kSilent);
  EXPECT_EQ(reading(store_, "other"), Reading::kUnreadable);
  desktop_.startLocked(Prompter::kSilent);
  EXPECT_EQ(reading(store_, "other"), Reading::kUnreadable);
  EXPECT_EQ(desktop_.swallowedCalls(), 0);
}

TEST_F(SecretServiceTest, TheUserUnlocksForAnItemAndForSaving) {
  startLockedWithItem(Prompter::kAnswering);
  desktop_.answerNextPrompt("password");
  EXPECT_TRUE(found());
  desktop_.lock();
  desktop_.answerNextPrompt("password");
  EXPECT_TRUE(save(store_, {2}));
  EXPECT_EQ(found(), Bytes{2});
}

// What a collection shows of its items is less before it was open for the first time.
TEST_F(SecretServiceTest, TheUserUnlocksForAnItemOfAnEarlierSession) {
  startLockedWithItem(Prompter::kNone);
  desktop_.startLocked(Prompter::kAnswering);
  desktop_.answerNextPrompt("password");
  EXPECT_TRUE(found());
}

TEST_F(SecretServiceTest, AnAnswerThatComesTooLateServesTheNextCall) {
  startLockedWithItem(Prompter::kAnswering);
  desktop_.answerNextPrompt("password", 500ms);
  SecretService hasty({1min, 1ms});
  EXPECT_EQ(reading(hasty), Reading::kUnreadable);
  EXPECT_TRUE(found());
}

TEST_F(SecretServiceTest, AServiceThatWasKilledIsUsedAgainOnceItIsBack) {
  desktop_.startOpen();
  EXPECT_TRUE(save(store_, {1}));
  desktop_.signalDaemon(SIGKILL);
  EXPECT_EQ(reading(store_), Reading::kUnreadable);
  desktop_.startOpen();
  EXPECT_EQ(found(), Bytes{1});
}

TEST_F(SecretServiceTest, ABusThatGoesAwayEndsTheCallAndTheNextBusIsUsed) {
  desktop_.startSilent();
  auto load = std::async(std::launch::async, [this] { return reading(store_); });
  desktop_.awaitSwallowedCall();
  desktop_.killBus();
  EXPECT_EQ(load.get(), Reading::kUnreadable);
  SecretServiceOfTest next;
  next.startOpen();
  EXPECT_TRUE(save(store_));
}

TEST_F(SecretServiceTest, CallsOfManyThreadsDontMix) {
  desktop_.startOpen();
  std::vector<std::future<void>> calls;
  for (uint8_t i = 0; i < 4; ++i) {
    calls.push_back(std::async(std::launch::async, [this, i] {
      const std::string account(1, static_cast<char>('a' + i));
      EXPECT_TRUE(store_.save("Orvane", account, Bytes{i}));
      EXPECT_EQ(found(account), Bytes{i});
    }));
  }
}

struct Arrangement {
  std::string name;
  std::function<void(SecretServiceTest&)> make;

  friend void PrintTo(const Arrangement& arrangement, std::ostream* stream) { *stream << arrangement.name; }
};

class SecretServiceFaultTest : public SecretServiceTest, public testing::WithParamInterface<Arrangement> {};

TEST_P(SecretServiceFaultTest, NothingIsReadOrSavedAndTheLogSaysOnceWhy) {
  GetParam().make(*this);
  SecretService hasty({500ms, 100ms});
  OvSetLogFile(folder_.file("log").c_str());
  EXPECT_EQ(reading(hasty), Reading::kUnreadable);
  EXPECT_FALSE(save(hasty));
  OvSetLogFile(nullptr);
  const std::string log = contentOf(folder_.file("log"));
  EXPECT_THAT(log, testing::MatchesRegex(".*: SecretService::load: .+\n.*: SecretService::save: .+\n"));
  EXPECT_THAT(log, testing::Not(testing::HasSubstr(kSecret)));
}

const Arrangement kFaults[] = {
    {"NoBus", [](auto&) { setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent", 1); }},
    {"NoService", [](auto&) {}},
    {"AServiceThatNeverAnswers", [](auto& test) { test.desktop_.startSilent(); }},
    {"AServiceThatHangs",
     [](auto& test) {
       test.desktop_.startOpen();
       test.desktop_.signalDaemon(SIGSTOP);
     }},
    {"LockedAndNobodyToAsk", [](auto& test) { test.startLockedWithItem(Prompter::kNone); }},
    {"LockedAndTheUserDeclines",
     [](auto& test) {
       test.startLockedWithItem(Prompter::kAnswering);
       for (int i = 0; i < 2; ++i) test.desktop_.answerNextPrompt(std::nullopt);
     }},
    {"LockedAndNobodyAnswers", [](auto& test) { test.startLockedWithItem(Prompter::kSilent); }},
};
INSTANTIATE_TEST_SUITE_P(, SecretServiceFaultTest, testing::ValuesIn(kFaults),
                         [](const auto& row) { return row.param.name; });

TEST_F(SecretServiceTest, ABusThatSaysNothingIsNoBus) {
  const orvane::FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM, 0));
  sockaddr_un address{AF_UNIX, {}};
  folder_.file("dumb").copy(address.sun_path, sizeof address.sun_path - 1);
  ASSERT_EQ(bind(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(listen(socket.number(), 5), 0);
  setenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + folder_.file("dumb")).c_str(), 1);
  SecretService hasty({100ms, 100ms});
  EXPECT_EQ(reading(hasty), Reading::kUnreadable);
}

class SecretServiceCancelTest : public SecretServiceTest, public testing::WithParamInterface<Arrangement> {};

TEST_P(SecretServiceCancelTest, EndsTheCallAtOnceAndEveryLaterOne) {
  GetParam().make(*this);
  auto load = std::async(std::launch::async, [this] { return reading(store_); });
  desktop_.awaitSwallowedCall();
  const auto start = std::chrono::steady_clock::now();
  store_.cancelAll();
  EXPECT_EQ(load.get(), Reading::kUnreadable);
  EXPECT_FALSE(save(store_));
  EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
}

const Arrangement kWaits[] = {
    {"ForTheService", [](auto& test) { test.desktop_.startSilent(); }},
    {"ForTheUser", [](auto& test) { test.startLockedWithItem(Prompter::kSilent); }},
};
INSTANTIATE_TEST_SUITE_P(, SecretServiceCancelTest, testing::ValuesIn(kWaits),
                         [](const auto& row) { return row.param.name; });

}  // namespace

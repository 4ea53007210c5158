#include <sstream>

#include <unistd.h>

#include "Support/OvWriteLog.h"
#include "Support/TemporaryFolder.h"

namespace {

class OvWriteLogTest : public testing::Test {
 protected:
  OvWriteLogTest() { OvSetLogFile(path_.c_str()); }
  ~OvWriteLogTest() override {
    OvSetLogFile("");
    OvSetLogLevel(2);
    OvSetLogDelay(0);
  }
  std::vector<std::string> lines() const {
    std::istringstream stream(contentOf(path_));
    std::vector<std::string> result;
    for (std::string line; std::getline(stream, line);) result.push_back(line);
    return result;
  }

  const TemporaryFolder folder_;
  const std::string path_ = folder_.file("log");
};

TEST_F(OvWriteLogTest, ALineHasTimeProcessThreadAndMessage) {
  OvWriteLog(2, "%s: code %d", "somewhere", 7);
  ASSERT_EQ(lines().size(), 1u);
  const std::string writer = std::to_string(getpid()) + ":" + std::to_string(gettid());
  EXPECT_THAT(lines()[0], testing::MatchesRegex("[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}: " + writer +
                                                ": somewhere: code 7"));
}

TEST_F(OvWriteLogTest, OnlyLinesUpToTheLevelAreWritten) {
  OvWriteLog(2, "default level");
  OvWriteLog(4, "above it");
  OvSetLogLevel(4);
  OvWriteLog(5, "still above");
  OvWriteLog(4, "raised");
  OvSetLogLevel(0);
  OvWriteLog(2, "off");
  ASSERT_EQ(lines().size(), 2u);
  EXPECT_THAT(lines()[1], testing::EndsWith(": raised"));
}

TEST_F(OvWriteLogTest, ALineHasNoLimitOfLength) {
  const std::string message(200000, 'x');
  OvWriteLog(2, "%s", message.c_str());
  EXPECT_THAT(lines().at(0), testing::EndsWith(message));
}

TEST_F(OvWriteLogTest, ARemovedFileIsMadeAnewByTheNextLine) {
  OvWriteLog(2, "first");
  OvDeleteLog();
  EXPECT_FALSE(std::filesystem::exists(path_));
  OvWriteLog(2, "second");
  EXPECT_EQ(lines().size(), 1u);
}

TEST_F(OvWriteLogTest, NoPathNoFileAndABadPathNoHarm) {
  OvSetLogFile(folder_.file("missing/log").c_str());
  OvWriteLog(2, "lost");
  OvSetLogFile((folder_.path().string() + "/" + std::string(600, 'p')).c_str());
  OvWriteLog(2, "lost");
  OvSetLogFile(nullptr);
  OvWriteLog(2, "lost");
  EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
}

// As where memory is short: in the "C" locale there is no way to write this character.
TEST_F(OvWriteLogTest, AMessageThatCantBeMadeLosesItsLineAlone) {
  static_assert(noexcept(OvWriteLog(2, "message")));
  OvWriteLog(2, "%ls", L"\u20AC");
  OvWriteLog(2, "next");
  EXPECT_THAT(lines(), testing::ElementsAre(testing::EndsWith(": next")));
}

TEST_F(OvWriteLogTest, ErrnoOutlivesALineThatIsLost) {
  OvSetLogFile(folder_.file("missing/log").c_str());
  OvSetLogDelay(1);
  errno = EDOM;
  OvWriteLog(2, "%s", std::string(100000, 'x').c_str());
  EXPECT_EQ(errno, EDOM);
}

TEST_F(OvWriteLogTest, LinesOfManyThreadsStayWhole) {
  const std::string text(500, 'w');
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (int line = 0; line < 50; ++line) OvWriteLog(2, "%s", text.c_str());
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(lines(), testing::AllOf(testing::SizeIs(200), testing::Each(testing::EndsWith(": " + text))));
}

}  // namespace

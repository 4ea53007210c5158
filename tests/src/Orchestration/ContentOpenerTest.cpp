#include <optional>

#include "Orchestration/ContentOpener.h"
#include "Support/FakeOpener.h"
#include "Support/FakeTimer.h"
#include "Support/PumpedQueue.h"
#include "Support/TemporaryFolder.h"

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using Actions = std::vector<std::string>;

class ContentOpenerTest : public testing::Test {
 protected:
  ContentOpenerTest() { std::filesystem::current_path(folder_.path()); }

  // Lets time pass, with the looks for a mount that come due.
  void pass(std::chrono::seconds time) {
    for (queue_->pump(); time > 0s; --time) {
      timer_->advance(1s);
      queue_->pump();
    }
  }

  const TemporaryFolder folder_{};
  const std::shared_ptr<FakeOpener> desktop_ = std::make_shared<FakeOpener>();
  const std::shared_ptr<PumpedQueue> queue_ = std::make_shared<PumpedQueue>();
  const std::shared_ptr<FakeTimer> timer_ = std::make_shared<FakeTimer>();
  std::optional<ContentOpener> opener_{std::in_place, desktop_, queue_, timer_};
};

TEST_F(ContentOpenerTest, OpensFilesAndAddresses) {
  const std::string oddName = "50% #1? \"it's\" \\ $(id);\xC3\xBC\xFF~.txt";
  const std::string escapedName = "50%25%20%231%3F%20%22it%27s%22%20%5C%20%24%28id%29%3B%C3%BC%FF~.txt";
  for (const std::string& name : {oddName, std::string("plain"), std::string("-rf")}) writeFile(folder_.file(name), "");
  const std::string folder = folder_.path(), fileAddress = "open file://" + folder;
  const struct {
    std::string programPath;
    bool result;
    Actions actions;
  } cases[] = {
      {folder + "/plain", true, {fileAddress + "/plain"}},
      {"\"" + folder + "/plain\"", true, {fileAddress + "/plain"}},
      {"\"" + folder + "/plain", true, {fileAddress + "/plain"}},
      {"\"" + folder + "/" + oddName + "\"", true, {fileAddress + "/" + escapedName}},
      {folder, true, {fileAddress}},
      {"plain", true, {fileAddress + "/plain"}},
      {"-rf", true, {fileAddress + "/-rf"}},
      {folder + "/absent", false, {}},
      {"\"" + folder + "/absent\"", false, {}},
      {"\"\"" + folder + "/plain\"\"", true, {"open http://\"" + folder + "/plain\""}},
      {"example.com/a b?c=d", true, {"open http://example.com/a b?c=d"}},
      {"\"example.com\"", true, {"open http://example.com"}},
      {"-example", true, {"open http://-example"}},
      {"javascript:alert(1)", true, {"open http://javascript:alert(1)"}},
      {"https://example.com/?q=%22&$(id)#x", true, {"open https://example.com/?q=%22&$(id)#x"}},
      {"\"ftp://example.com\"", true, {"open ftp://example.com"}},
      {"\"", true, {"open http://"}},
      {"", true, {"open http://"}},
      {"http://example.com/\n--help", false, {}},
      {std::string("http://example.com/\0x", 21), false, {}},
      {"example.com\x7F", false, {}},
      {"\"\\\\nas\\share\\a\tb\"", false, {}},
  };
  for (const auto& [programPath, result, actions] : cases) {
    EXPECT_EQ(opener_->MCOpenAppContent(programPath), result) << programPath;
    EXPECT_EQ(desktop_->takeActions(), actions) << programPath;
  }
  EXPECT_EQ(queue_->size() + timer_->size(), 0U);
}

TEST(NetworkPath, IsSplitOrRefused) {
  const auto parts = [](const std::string& programPath) {
    const auto path = ContentOpener::getPathForMountAndFilename(programPath);
    return path ? path->mountPath + "|" + path->mountName + "|" + path->fileName : "refused";
  };
  const std::string longest(PATH_MAX - std::string(R"("\\s\")").size(), 'x');
  const struct {
    std::string programPath, parts;
  } cases[] = {
      {R"("\\server\share\folder\file.ext")", "server/share/folder|folder|file.ext"},
      {R"("\\server\share\"quoted".txt")", "server/share|share|\"quoted\".txt"},
      {R"("\\server\file.ext")", "server|server|file.ext"},
      {R"("\\s\)" + longest + "\"", "s|s|" + longest},
      {R"("\\s\)" + longest + "x\"", "refused"},
      {R"(\\server\share\file.ext)", "refused"},
      {R"("\\server\share\file.ext)", "refused"},
      {R"(http://example.com/a\\b)", "refused"},
      {R"("C:\\folder\\file.ext")", "refused"},
      {R"("\\server")", "refused"},
      {R"("\\\file.ext")", "refused"},
      {R"("\\server\share\")", "refused"},
      {R"("\\server\\file.ext")", "refused"},
      {R"("\\server\share\..\..\..\file.ext")", "refused"},
      {R"("\\server\share\./file.ext")", "refused"},
      {R"("\\server\share\folder/../..")", "refused"},
      {R"("\\")", "refused"},
      {R"("\\)", "refused"},
      {R"(\\)", "refused"},
      {"", "refused"},
  };
  for (const auto& [programPath, expected] : cases) EXPECT_EQ(parts(programPath), expected) << programPath;
}

TEST_F(ContentOpenerTest, OpensAFileOfAMountedShareAtOnce) {
  writeFile(folder_.file("a b.txt"), "");
  desktop_->mount("nas/share/folder", folder_.path());
  EXPECT_TRUE(opener_->MCOpenAppContent(R"("\\nas\share\folder\a b.txt")"));
  EXPECT_THAT(desktop_->takeActions(), ElementsAre("open file://" + folder_.path().string() + "/a%20b.txt"));
  EXPECT_EQ(queue_->size(), 0U);
}

TEST_F(ContentOpenerTest, OpensAFileOnceItsShareIsMounted) {
  EXPECT_TRUE(opener_->MCOpenAppContent(R"("\\na@s\my share\a.txt")"));
  EXPECT_THAT(desktop_->takeActions(), ElementsAre("mount smb://na%40s/my%20share"));
  opener_.reset();  // the wait goes on without it
  pass(5s);
  desktop_->mount("na@s/my share", folder_.path());
  pass(5s);
  EXPECT_THAT(desktop_->takeActions(), IsEmpty());
  writeFile(folder_.file("a.txt"), "");
  pass(1s);
  EXPECT_THAT(desktop_->takeActions(), ElementsAre("open file://" + folder_.path().string() + "/a.txt"));
  EXPECT_EQ(queue_->size() + timer_->size(), 0U);
}

TEST_F(ContentOpenerTest, OpensAFileInTheEndThoughItsShareIsNeverMounted) {
  EXPECT_TRUE(opener_->MCOpenAppContent(R"("\\nas\share\folder\a b.txt")"));
  EXPECT_THAT(desktop_->takeActions(), ElementsAre("mount smb://nas/share/folder"));
  pass(178s);  // 179 looks
  EXPECT_THAT(desktop_->takeActions(), IsEmpty());
  pass(1s);
  EXPECT_THAT(desktop_->takeActions(), ElementsAre("open file:///Volumes/folder/a%20b.txt"));
  EXPECT_EQ(queue_->size() + timer_->size(), 0U);
}

}  // namespace

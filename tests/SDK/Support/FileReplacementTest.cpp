#include <sys/stat.h>
#include <unistd.h>

#include "Support/FileReplacement.h"
#include "Support/ResourceLimit.h"
#include "Support/TemporaryFolder.h"

using orvane::FileReplacement;
using orvane::readFile;
using orvane::replaceFile;

namespace {

size_t filesIn(const std::filesystem::path& folder) {
  return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

TEST(FileReplacement, TheNewFileHasExactlyTheBytesAndIsPrivate) {
  const TemporaryFolder folder;
  const std::string path = folder.file("a");
  writeFile(path, "an old content that is longer");
  chmod(path.c_str(), 0644);

  ASSERT_TRUE(replaceFile(path, "b\0c", 3));

  EXPECT_EQ(readFile(path), std::string("b\0c", 3));
  EXPECT_EQ(modeOf(path), 0600u);
  EXPECT_EQ(filesIn(folder.path()), 1u);
}

TEST(FileReplacement, ALinkIsReplacedAndItsTargetLeftAlone) {
  const TemporaryFolder folder;
  writeFile(folder.file("target"), "untouched");
  std::filesystem::create_symlink(folder.file("target"), folder.file("link"));

  ASSERT_TRUE(replaceFile(folder.file("link"), "x", 1));

  EXPECT_EQ(contentOf(folder.file("target")), "untouched");
  EXPECT_FALSE(std::filesystem::is_symlink(folder.file("link")));
}

TEST(FileReplacement, AFailedWriteLeavesWhatWasThereAndNothingBeside) {
  const TemporaryFolder folder;
  const std::string path = folder.file("a");
  writeFile(path, "old");

  {
    const ResourceLimit full(RLIMIT_FSIZE, 4096);
    EXPECT_FALSE(replaceFile(path, std::string(100000, 'x').data(), 100000));
  }
  EXPECT_EQ(contentOf(path), "old");
  EXPECT_EQ(filesIn(folder.path()), 1u);
  EXPECT_FALSE(replaceFile(folder.file("missing/folder"), "x", 1));
  EXPECT_EQ(errno, ENOENT);
}

TEST(FileReplacement, PiecesShowOnlyOnceTheyAreMovedIntoPlace) {
  const TemporaryFolder folder;
  const std::string path = folder.file("a");
  writeFile(path, "old");
  {
    FileReplacement abandoned(path);
    EXPECT_TRUE(abandoned.append("new", 3));
  }
  FileReplacement replacement(path);
  EXPECT_TRUE(replacement.append("ne", 2) && replacement.append("w", 1));
  EXPECT_EQ(contentOf(path), "old");
  EXPECT_TRUE(replacement.moveIntoPlace());
  EXPECT_EQ(contentOf(path), "new");
  EXPECT_EQ(filesIn(folder.path()), 1u);
}

TEST(FileReplacement, OnlyARegularFileIsRead) {
  const TemporaryFolder folder;
  mkfifo(folder.file("pipe").c_str(), 0600);
  EXPECT_EQ(readFile(folder.file("pipe")), std::nullopt);
  EXPECT_EQ(readFile(folder.path()), std::nullopt);
  EXPECT_EQ(readFile(folder.file("missing")), std::nullopt);
}

}  // namespace

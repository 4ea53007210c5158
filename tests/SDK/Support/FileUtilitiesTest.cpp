#include <cstdio>

#include <sys/stat.h>
#include <unistd.h>

#include "Support/FileUtilities.h"
#include "Support/ResourceLimit.h"
#include "Support/TemporaryFolder.h"

namespace {

class FileUtilitiesTest : public testing::Test {
 protected:
  size_t fileCount() const {
    return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(folder_.path()), {}));
  }

  const TemporaryFolder folder_;
  const std::string source_ = folder_.file("source");
  const std::string target_ = folder_.file("target");
};

TEST_F(FileUtilitiesTest, ACopyHasAllBytesOfAnySizeAndIsPrivate) {
  for (const size_t size : {0u, 1u, 4096u, 65536u, 65537u, 300000u}) {
    std::string content(size, 'x');
    if (size > 0) content.back() = '\0';
    writeFile(source_, content);
    ASSERT_EQ(ovutils_copy_file(source_.c_str(), target_.c_str(), 0), 1);
    EXPECT_EQ(contentOf(target_), content);
  }
  EXPECT_EQ(modeOf(target_), 0600u);
  EXPECT_EQ(fileCount(), 2u);
}

TEST_F(FileUtilitiesTest, ARefusedCopyLeavesTheTargetAlone) {
  const std::string missing = folder_.file("missing");
  writeFile(source_, "new");
  writeFile(target_, "old");
  EXPECT_EQ(ovutils_copy_file(source_.c_str(), target_.c_str(), 1), 0);
  EXPECT_EQ(ovutils_copy_file(missing.c_str(), target_.c_str(), 0), 0);
  EXPECT_EQ(ovutils_copy_file(nullptr, target_.c_str(), 0), 0);
  EXPECT_EQ(contentOf(target_), "old");
  EXPECT_EQ(ovutils_copy_file(source_.c_str(), nullptr, 0), 0);
  EXPECT_EQ(ovutils_copy_file(source_.c_str(), (missing + "/target").c_str(), 0), 0);
  EXPECT_EQ(ovutils_copy_file(source_.c_str(), folder_.path().c_str(), 0), 0);
  EXPECT_EQ(fileCount(), 2u);
  EXPECT_EQ(ovutils_copy_file(source_.c_str(), missing.c_str(), 1), 1);
}

TEST_F(FileUtilitiesTest, APipeAtTheTargetIsNeitherReplacedNorWrittenTo) {
  writeFile(source_, "new");
  ASSERT_EQ(mkfifo(target_.c_str(), 0600), 0);
  EXPECT_EQ(ovutils_copy_file(source_.c_str(), target_.c_str(), 0), 0);
  EXPECT_TRUE(std::filesystem::is_fifo(target_));
}

TEST_F(FileUtilitiesTest, ACopyOntoItselfKeepsTheContent) {
  writeFile(source_, "content");
  EXPECT_EQ(ovutils_copy_file(source_.c_str(), source_.c_str(), 0), 1);
  EXPECT_EQ(contentOf(source_), "content");
}

// A folder opens and fails at the first read; a file size limit stands in for a full disk.
TEST_F(FileUtilitiesTest, ACopyThatFailsHalfwayLeavesNoTarget) {
  writeFile(target_, "old");
  EXPECT_EQ(ovutils_copy_file(folder_.path().c_str(), target_.c_str(), 0), 0);
  EXPECT_EQ(fileCount(), 0u);

  writeFile(source_, std::string(300000, 'x'));
  writeFile(target_, "old");
  {
    const ResourceLimit full(RLIMIT_FSIZE, 100000);
    EXPECT_EQ(ovutils_copy_file(source_.c_str(), target_.c_str(), 0), 0);
  }
  EXPECT_EQ(fileCount(), 1u);
  EXPECT_TRUE(std::filesystem::exists(source_));
}

TEST_F(FileUtilitiesTest, WhatOpensForReadingExists) {
  mkfifo(target_.c_str(), 0600);
  EXPECT_TRUE(ovutils_file_exists(target_.c_str()));
  EXPECT_TRUE(ovutils_file_exists(folder_.path().c_str()));
  EXPECT_FALSE(ovutils_file_exists(source_.c_str()));
  EXPECT_FALSE(ovutils_file_exists(nullptr));
}

TEST_F(FileUtilitiesTest, ATemporaryFileIsMadeAtOnceAndForItsOwnerOnly) {
  char first[L_tmpnam];
  char second[L_tmpnam];
  ASSERT_EQ(ovutils_get_temp_filename(first), 1);
  ASSERT_EQ(ovutils_get_temp_filename(second), 1);
  EXPECT_EQ(modeOf(first), 0600u);
  EXPECT_EQ(std::filesystem::file_size(first), 0u);
  EXPECT_STRNE(first, second);
  EXPECT_EQ(unlink(first) + unlink(second), 0);
}

}  // namespace

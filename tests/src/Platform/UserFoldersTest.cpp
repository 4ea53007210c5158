#include <cstdlib>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Platform/UserFolders.h"
#include "Support/HomeOfTest.h"

namespace {

namespace fs = std::filesystem;

unsigned int modeOf(const fs::path& path) { return static_cast<unsigned int>(fs::status(path).permissions()); }

class UserFoldersTest : public testing::Test {
 protected:
  const HomeOfTest home_;
};

TEST_F(UserFoldersTest, FollowTheEnvironmentAndItsDefaults) {
  struct Row {
    const char* variable;
    std::string (*folder)();
    const char* belowHome;
  };
  const Row rows[] = {
      {"XDG_CONFIG_HOME", orvane::configurationFolder, ".config/Orvane"},
      {"XDG_DATA_HOME", [] { return orvane::dataFolder("Orvane"); }, ".local/share/Orvane"},
      {"XDG_STATE_HOME", orvane::stateFolder, ".local/state/Orvane"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.variable);
    const fs::path usual = home_.path() / row.belowHome;
    for (const char* none : {"", "relative/folder"}) {
      setenv(row.variable, none, 1);
      EXPECT_EQ(row.folder(), usual);
    }
    const fs::path chosen = home_.path() / row.variable / "deeper";
    setenv(row.variable, chosen.c_str(), 1);
    EXPECT_EQ(row.folder(), chosen / "Orvane");
    for (const fs::path& made : {usual, usual.parent_path(), chosen / "Orvane", chosen, chosen.parent_path()}) {
      EXPECT_EQ(modeOf(made), 0700u) << made;
    }
  }
}

TEST_F(UserFoldersTest, TheUserDatabaseKnowsTheHomeThatTheEnvironmentLacks) {
  unsetenv("HOME");
  EXPECT_EQ(orvane::homeFolder(), getpwuid(geteuid())->pw_dir);
}

TEST_F(UserFoldersTest, TemporaryFilesGoToTheSessionsFolderOnlyIfItIsTheUsersAlone) {
  const fs::path session = home_.path() / "session";
  const std::string lastResort = home_.file("last-resort");
  setenv("XDG_RUNTIME_DIR", session.c_str(), 1);
  EXPECT_EQ(orvane::temporaryFolder(lastResort), lastResort) << "nobody but the system makes the session's folder";
  fs::create_directory(session);
  chmod(session.c_str(), 0750);
  EXPECT_EQ(orvane::temporaryFolder(lastResort), lastResort);
  chmod(session.c_str(), 0700);
  EXPECT_EQ(orvane::temporaryFolder(lastResort), session / "Orvane");
  EXPECT_EQ(modeOf(session / "Orvane"), 0700u);
}

TEST_F(UserFoldersTest, APrivateFolderIsTheUsersOwnAndNothingElse) {
  const std::string made = home_.file("made");
  EXPECT_EQ(orvane::privateFolder(made), made);
  chmod(made.c_str(), 0777);
  EXPECT_EQ(orvane::privateFolder(made), made);
  EXPECT_EQ(modeOf(made), 0700u);

  // Only to root no folder of another user is at hand, but root can make one.
  std::string foreign = "/usr";
  if (geteuid() == 0) {
    foreign = home_.file("foreign");
    fs::create_directory(foreign);
    ASSERT_EQ(chown(foreign.c_str(), 65534, 65534), 0);
  }
  fs::create_directory_symlink(made, home_.path() / "link");
  writeFile(home_.path() / "file", "");
  for (const std::string& refused :
       {foreign, home_.file("link"), home_.file("file"), home_.file("absent/folder"), std::string()}) {
    EXPECT_EQ(orvane::privateFolder(refused), "") << refused;
  }
}

}  // namespace

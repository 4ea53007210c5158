#include <cstdlib>

#include "OrvaneCommon/OvUPaths.h"
#include "Support/HomeOfTest.h"

namespace {

namespace fs = std::filesystem;

TEST(OvUPaths, TheSessionProgramLiesInsideTheBundleOrBesideIt) {
  constexpr const char* kProgram = "Orvane Connection.app/Contents/MacOS/Orvane Connection";
  const std::pair<const char*, std::string> rows[] = {
      {"/opt/Orvane.app/Contents/MacOS/orvane", "/opt/Orvane.app/Contents/Applications/"},
      {"/opt/Renamed.app/Contents/MacOS/orvane", "/opt/"},
      {"/opt/Orvane.app/Contents/bin/orvane", "/opt/Orvane.app/Contents/bin/"},
      {"/opt/Orvane/Contents/MacOS/orvane", "/opt/Orvane/Contents/MacOS/"},
      {"/usr/bin/orvane", "/usr/bin/"},
      {"/orvane", "/"},
  };
  for (const auto& [executable, folder] : rows) {
    EXPECT_EQ(OvU_GetOrvaneConnectionPath(orvane::bundleOfProgram(executable)), folder + kProgram) << executable;
  }
  EXPECT_EQ(OvU_GetOrvaneConnectionPath(""), "");
  EXPECT_EQ(OvU_GetOrvaneConnectionPath(), fs::read_symlink("/proc/self/exe").parent_path() / kProgram);
}

TEST(OvUPaths, ThePlugInOfTheSystemComesBeforeTheUsers) {
  const HomeOfTest home;
  const fs::path systemPlugIns = home.path() / "system";
  const fs::path userPlugIns = home.path() / ".mozilla/plugins";
  EXPECT_EQ(OvU_GetFlashPlayerPath(systemPlugIns), "");
  for (const fs::path& plugIns : {userPlugIns, systemPlugIns}) {
    fs::create_directories(plugIns);
    writeFile(plugIns / "libflashplayer.so", "");
    EXPECT_EQ(OvU_GetFlashPlayerPath(systemPlugIns), plugIns / "libflashplayer.so");
  }
  EXPECT_TRUE(OvU_IsFlashPlayerInstalled());
}

TEST(OvUPaths, EachUniqueFolderIsAnother) {
  const TemporaryFolder folder;
  const std::string first = OvU_CreateUniqueSubDir(folder.path());
  EXPECT_TRUE(fs::is_directory(first) && first.starts_with(folder.file("clipboard."))) << first;
  EXPECT_NE(OvU_CreateUniqueSubDir(folder.path()), first);
  EXPECT_EQ(OvU_CreateUniqueSubDir(folder.file("absent")), "");
}

}  // namespace

#include "Platform/Linux/Desktop/AutostartEntry.h"
#include "Support/ChildProcess.h"
#include "Support/HomeOfTest.h"

namespace {

class AutostartEntryTest : public testing::Test {
 protected:
  const HomeOfTest home_;
  const std::string folder_ = home_.file(".config/autostart");
  const std::string file_ = folder_ + "/example.orvane.Connector.desktop";
};

TEST_F(AutostartEntryTest, IsThereOrNot) {
  orvane::AutostartEntry entry("/usr/bin/orvane");
  EXPECT_FALSE(entry.isEnabled());
  EXPECT_TRUE(entry.setEnabled(false));
  EXPECT_FALSE(std::filesystem::exists(folder_));
  EXPECT_TRUE(entry.setEnabled(true));
  EXPECT_TRUE(entry.isEnabled());
  EXPECT_EQ(modeOf(file_), 0644);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_), {}), 1);
  EXPECT_TRUE(entry.setEnabled(false));
  EXPECT_FALSE(entry.isEnabled());
  EXPECT_FALSE(std::filesystem::exists(file_));
  std::filesystem::remove(folder_);
  writeFile(folder_, "");
  EXPECT_FALSE(entry.setEnabled(true));
  EXPECT_FALSE(entry.isEnabled());
}

TEST_F(AutostartEntryTest, TheDesktopMaySwitchItOff) {
  orvane::AutostartEntry entry("/usr/bin/orvane");
  for (const auto& [line, isEnabled] : {std::pair("Hidden=true\n", false),
                                        {" Hidden = true \n", false},
                                        {"X-GNOME-Autostart-enabled=false\n", false},
                                        {"Hidden=false\nX-GNOME-Autostart-enabled=true\n", true},
                                        {"Comment=Hidden=true\n", true},
                                        {"[Desktop Action x]\nHidden=true\n", true}}) {
    ASSERT_TRUE(entry.setEnabled(true));
    writeFile(file_, contentOf(file_) + line);
    EXPECT_EQ(entry.isEnabled(), isEnabled) << line;
    ASSERT_TRUE(entry.setEnabled(true));
    EXPECT_TRUE(entry.isEnabled()) << line;
  }
}

TEST_F(AutostartEntryTest, ADesktopFindsTheProgramWhateverItsPath) {
  for (const std::string name : {"orvane", "a b", "\"'`$HOME\\n;#&", "ü\\\\x"}) {
    const std::string program = home_.file(name);
    writeFile(program, "#!/bin/sh\necho \"$*\"\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    ASSERT_TRUE(orvane::AutostartEntry(program).setEnabled(true));
    ChildProcess launcher("/usr/bin/gio", {"launch", file_});
    EXPECT_EQ(launcher.end(), 0) << name << ": " << launcher.errors();
    EXPECT_EQ(launcher.output(), "--background\n") << name;
  }
}

}  // namespace

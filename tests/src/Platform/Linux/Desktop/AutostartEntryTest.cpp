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

TEST_F(AutostartEntryTest, IsThereOrNotAndTheDesktopMaySwitchItOff) {
  orvane::AutostartEntry entry("/usr/bin/orvane");
  EXPECT_FALSE(entry.isEnabled());
  EXPECT_TRUE(entry.setEnabled(false));
  for (const auto& [line, isEnabled] : {std::pair("", true),
                                        {" Hidden = true \n", false},
                                        {"X-GNOME-Autostart-enabled=false\n", false},
                                        {"Hidden=false\nX-GNOME-Autostart-enabled=true\n", true},
                                        {"[Desktop Action x]\nHidden=true\n", true}}) {
    EXPECT_TRUE(entry.setEnabled(true));
    EXPECT_EQ(modeOf(file_), 0644);
    writeFile(file_, contentOf(file_) + line);
    EXPECT_EQ(entry.isEnabled(), isEnabled) << line;
  }
  EXPECT_TRUE(entry.setEnabled(false));
  EXPECT_TRUE(std::filesystem::remove(folder_)) << "nothing is left in it";
  writeFile(folder_, "");
  EXPECT_FALSE(entry.setEnabled(true) || entry.isEnabled());
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

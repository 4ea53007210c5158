#include <cstdlib>
#include <optional>

#include "Platform/Linux/DesktopOpener.h"
#include "Support/PumpedQueue.h"
#include "Support/TemporaryFolder.h"

namespace {

// Programs that stand for those of the desktop, and a folder for its mounts.
class DesktopOpenerTest : public testing::Test {
 protected:
  DesktopOpenerTest() {
    setenv("PATH", folder_.path().c_str(), 1);
    setenv("XDG_RUNTIME_DIR", folder_.path().c_str(), 1);
  }

  // A program that writes down its name and arguments, one a line, and ends with this status.
  void putProgram(const std::string& name, int status) {
    const std::string calls = folder_.file("calls");
    writeFile(folder_.file(name), "#!/bin/sh\nprintf '%s\\n' " + name + " \"$@\" >> '" + calls + "'\nexit " +
                                      std::to_string(status) + "\n");
    std::filesystem::permissions(folder_.file(name), std::filesystem::perms::owner_all);
  }
  // What the programs have written down once all have ended.
  std::string takeCalls() {
    queue_->pump();
    const std::string calls = contentOf(folder_.file("calls"));
    std::filesystem::remove(folder_.file("calls"));
    return calls;
  }
  orvane::DesktopOpener opener() {
    return orvane::DesktopOpener(std::make_shared<orvane::PosixProcessStarter>(queue_));
  }

  const TemporaryFolder folder_{};
  const std::shared_ptr<PumpedQueue> queue_ = std::make_shared<PumpedQueue>();
};

TEST_F(DesktopOpenerTest, OpensAnAddressAsOneArgumentThatIsNoOption) {
  EXPECT_FALSE(opener().openAddress("http://example.com"));
  putProgram("xdg-open", 0);
  const std::string address = "http://example.com/a b?c=\"d\"&e=$(touch sign);'f' --help";
  EXPECT_TRUE(opener().openAddress(address));
  EXPECT_EQ(takeCalls(), "xdg-open\n" + address + "\n");
  EXPECT_FALSE(opener().openAddress("--manual"));
  EXPECT_EQ(takeCalls(), "");
}

TEST_F(DesktopOpenerTest, AsksTheFileManagerForAShareThatCanNotBeMountedSilently) {
  EXPECT_FALSE(opener().mountShare("smb://nas/share"));
  putProgram("xdg-open", 0);
  EXPECT_TRUE(opener().mountShare("smb://nas/share"));
  EXPECT_EQ(takeCalls(), "xdg-open\nsmb://nas/share\n");
  putProgram("gio", 0);
  EXPECT_TRUE(opener().mountShare("smb://nas/share"));
  EXPECT_EQ(takeCalls(), "gio\nmount\n--\nsmb://nas/share\n");
  putProgram("gio", 2);
  EXPECT_TRUE(opener().mountShare("smb://nas/share"));
  EXPECT_EQ(takeCalls(), "gio\nmount\n--\nsmb://nas/share\nxdg-open\nsmb://nas/share\n");
}

TEST_F(DesktopOpenerTest, FindsTheMountsOfTheDesktop) {
  EXPECT_EQ(opener().mountedPath("nas/public"), std::nullopt);  // no folder of mounts
  for (const std::string name : {"smb-share:server=nas,share=public",
                                 "smb-share:domain=work,server=files.example.com,share=q1%2C 50%25,user=ann",
                                 "smb-share:server=b\xC3\xBCro,share=\xC3\xA4mter", "smb-share:server=bad%",
                                 "smb-share:", "smb-server:server=alone", "sftp:host=nas,share=other,server=nas",
                                 "smb-share:xserver=far,share=far", "smb-share:server=\xFF,share=\xFF"}) {
    std::filesystem::create_directories(folder_.path() / "gvfs" / name);
  }
  const struct {
    std::string networkFolder;
    std::optional<std::string> mountedPath;
  } cases[] = {
      {"nas/public", "smb-share:server=nas,share=public"},
      {"NAS/Public/Folder/Sub", "smb-share:server=nas,share=public/Folder/Sub"},
      {"files.example.com/Q1, 50%", "smb-share:domain=work,server=files.example.com,share=q1%2C 50%25,user=ann"},
      {"B\xC3\x9CRO/\xC3\x84mter/x", "smb-share:server=b\xC3\xBCro,share=\xC3\xA4mter/x"},
      {"nas/other", std::nullopt},
      {"nas/publi", std::nullopt},
      {"far/far", std::nullopt},
      {"alone", std::nullopt},
      {"alone/", std::nullopt},
      {"bad%/x", std::nullopt},
      {"\xFF/\xFF", std::nullopt},
      {"", std::nullopt},
      {"/", std::nullopt},
  };
  for (const auto& [networkFolder, mountedPath] : cases) {
    const std::string folder = folder_.file("gvfs/");
    EXPECT_EQ(opener().mountedPath(networkFolder), mountedPath ? std::optional(folder + *mountedPath) : std::nullopt)
        << networkFolder;
  }
}

}  // namespace

#include <csignal>

#include "Crypto/crypto.h"
#include "Files/OvSettings.h"
#include "Sessions/OvSessionManager.h"
#include "Support/ChildProcess.h"
#include "Support/DemoRegistryOfTest.h"
#include "Support/TemporaryFolder.h"

using testing::HasSubstr;
using testing::Not;

namespace {

// Until the session is known to others.
void readToBeginning(ChildProcess& program) {
  std::string line;
  do {
    line = program.line();
    ASSERT_THAT(line, testing::EndsWith("\n")) << program.errors();
  } while (line != "Session 1: is running.\n");
}

TEST(DemoSessionTest, WhatIsNoLaunchFileIsRefusedInWords) {
  const TemporaryFolder folder;
  std::string rubbish;
  for (int i = 0; i < 20'000; ++i) rubbish += static_cast<char>(i * i / 7);
  writeFile(folder.file("empty"), "");
  writeFile(folder.file("rubbish"), rubbish);
  writeFile(folder.file("cut"), orvane::encipheredContainer("full address:s:host\n").substr(1));
  const struct {
    std::vector<std::string> arguments;
    int status;
    const char* words;
  } cases[] = {
      {{}, 2, "Usage: demo-session --ovl PATH\n"},
      {{"--ovl"}, 2, "Usage: demo-session --ovl PATH\n"},
      {{"--frob", folder.file("rubbish")}, 2, "Usage: demo-session --ovl PATH\n"},
      {{"--ovl", folder.file("missing")}, 1, "missing can't be read as a launch file.\n"},
      {{"--ovl", folder.path()}, 1, " can't be read as a launch file.\n"},
      {{"--ovl", folder.file("empty")}, 1, "empty can't be read as a launch file.\n"},
      {{"--ovl", folder.file("rubbish")}, 1, "rubbish names no server to connect to.\n"},
      {{"--ovl", folder.file("cut")}, 1, "cut names no server to connect to.\n"},
  };
  for (const auto& row : cases) {
    ChildProcess program(DEMO_SESSION_PROGRAM, row.arguments);
    EXPECT_EQ(program.end(), row.status) << row.words;
    EXPECT_THAT(program.errors(), testing::EndsWith(row.words));
    EXPECT_EQ(program.output(), "");
  }
}

TEST(DemoSessionTest, NeitherSecretsNorControlCharactersAreShown) {
  const DemoRegistryOfTest registry;
  const TemporaryFolder folder;
  char password[513] = "";
  crypto_encrypt_password("open sesame", password, sizeof password);
  std::string text = "serveraddr:s:192.0.2.1\nusername:u:anna\x1b[2J\xC2\x9B\x32J\nticket:s:T-4711\ndeletefile:i:1\n";
  text.append("password:s:").append(password).append("\n");
  writeFile(folder.file("plain.ovl"), text);
  ChildProcess program(DEMO_SESSION_PROGRAM, {"--ovl", folder.file("plain.ovl")});
  readToBeginning(program);
  EXPECT_EQ(program.end(SIGTERM), 0) << program.errors();
  EXPECT_THAT(program.output(), HasSubstr("192.0.2.1) as anna?[2J?2J with a ticket"));
  for (const char* masked : {"\n  Ticket: ********\n", "\n  Password: ********\n"})
    EXPECT_THAT(program.output(), HasSubstr(masked));
  for (const char* secret : {"sesame", "4711", "\x1b"}) EXPECT_THAT(program.output(), Not(HasSubstr(secret)));
  EXPECT_FALSE(std::filesystem::exists(folder.file("plain.ovl")));
}

TEST(DemoSessionTest, OthersFindTheSessionAndItDoesWhatTheyAsk) {
  const DemoRegistryOfTest registry;
  OvSessionManager::useRegistry(registry.names());
  const TemporaryFolder folder;
  OvSettings record;
  record.setServerName("APP01");
  record.setDomain("D");
  record.setUsername("anna");
  using Command = int (OvSessionManager::*)(uint32_t);
  for (const auto& [end, word] : {std::pair<Command, std::string>{&OvSessionManager::logoffSession, "log off"},
                                  {&OvSessionManager::disconnectSession, "disconnect"}}) {
    ASSERT_TRUE(record.saveOvlFile(folder.file("launch.ovl").c_str()));
    ChildProcess program(DEMO_SESSION_PROGRAM, {"--ovl", folder.file("launch.ovl")});
    readToBeginning(program);
    OvSessionManager manager;
    ASSERT_EQ(manager.findSession(record), 1u);
    EXPECT_EQ(manager.startApplication(1, "calc\x1b.exe", "C:\\"), 1);
    EXPECT_EQ(program.line(), "Session 1: would run calc?.exe in C:\\ as well.\n");
    EXPECT_EQ(manager.activateSessionView(1), 1);
    EXPECT_EQ(program.line(), "Session 1: would come to the front.\n");
    EXPECT_EQ((manager.*end)(1), 1);
    EXPECT_EQ(program.line(), "Session 1: would " + word + ".\n");
    EXPECT_EQ(program.end(), 0);
    EXPECT_EQ(manager.findSession(record), 0u);
  }
}

}  // namespace

#include "Crypto/crypto.h"
#include "Support/ChildProcess.h"
#include "Support/TemporaryFolder.h"

using testing::HasSubstr;
using testing::Not;

namespace {

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
  const TemporaryFolder folder;
  char password[513] = "";
  crypto_encrypt_password("open sesame", password, sizeof password);
  writeFile(folder.file("plain.ovl"), std::string("serveraddr:s:192.0.2.1\nusername:u:anna\x1b[2J\xC2\x9B\x32J\n") +
                                          "ticket:s:T-4711\npassword:s:" + password + "\ndeletefile:i:1\n");
  ChildProcess program(DEMO_SESSION_PROGRAM, {"--ovl", folder.file("plain.ovl")});
  EXPECT_EQ(program.end(), 0) << program.errors();
  EXPECT_THAT(program.output(), HasSubstr("192.0.2.1) as anna?[2J?2J with a ticket"));
  for (const char* masked : {"\n  Ticket: ********\n", "\n  Password: ********\n"})
    EXPECT_THAT(program.output(), HasSubstr(masked));
  for (const char* secret : {"sesame", "4711", "\x1b"}) EXPECT_THAT(program.output(), Not(HasSubstr(secret)));
  EXPECT_FALSE(std::filesystem::exists(folder.file("plain.ovl")));
}

}  // namespace

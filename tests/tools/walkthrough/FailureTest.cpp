// Each failure is told in words and by the exit status, and gives nothing away.

#include <optional>

#include "Support/ChildProcess.h"
#include "Support/RefusingPort.h"
#include "WalkthroughTest.h"

using namespace orvane::demo;
using Kind = Fault::Kind;
using testing::HasSubstr;

namespace {

using FailureTest = WalkthroughTest;

TEST_F(FailureTest, StepsThatDoNotWorkOut) {
  broker_.changeFarm([](FarmDescription& farm) {
    std::erase_if(farm.applications, [](const Application& application) {
      return application.name != "writer" && application.name != "profiler";
    });
  });
  const DemoBroker old(
      {.capabilities = 0,
       .files = {{.path = "farm.xml", .content = "<ServerFarms><Farm><Location Number='1'/></Farm></ServerFarms>"}}});
  const RefusingPort refusing;
  writeFile(folder_.file("wrong"), kPassword + "!\n");
  writeFile(folder_.file("long"), kPassword + std::string(255, 'x'));
  const std::string longLabel(64, 'a');  // nobody asks the network for a name with such a part

  const struct {
    std::string words;
    std::vector<std::string> options;
    std::optional<Fault> fault{};
  } cases[] = {
      {"failed: The address is not valid. (0)\n", {"--address", "http://h:99999"}},
      {"failed: No configuration has been assigned to you. Please contact your system administrator. (7)\n",
       {"--address", "http://" + longLabel + ".invalid"}},
      {"(7)\n", {"--address", refusing.url("")}},
      {"The configuration names no broker.\n", {"--address", old.url() + "/farm.xml"}},
      {"The log-in failed: The data is invalid. (13)\n",
       {},
       Fault{.kind = Kind::kWrongRoot, .request = "authenticate"}},
      {"The connection failed: The data is invalid. (13)\n",
       {},
       Fault{.kind = Kind::kWrongRoot, .request = "getfarmproperties"}},
      {"The connection failed: The data is invalid. (14)\n",
       {},
       Fault{.kind = Kind::kEmptyBody, .request = "getapplicationlist"}},
      {"The launch failed: no ?[2J?2J (5)\n",
       {},
       Fault{.kind = Kind::kErrorCode, .request = "launchapplication", .number = 5, .text = "no \x1b[2J\xC2\x9B\x32J"}},

      {"/long can't be read", {"--password-file", folder_.file("long") + "/long"}},
      {"can't be read: Is a directory.\n", {"--password-file", folder_.path()}},
      {"The password is longer than 254 bytes.\n", {"--password-file", folder_.file("long")}},
      {"The log-in failed: The user name or password is incorrect. (1326)\n",
       {"--password-file", folder_.file("wrong")}},
      {"Name somebody with --user.\n", {"--user", "", "--password-file", ""}},
      {"The connection failed: This account is locked. (1909)\n", {"--user", "HAFENWERK\\locked"}},
      {"There is nothing to launch.\n", {"--user", "HAFENWERK\\guest"}},
      {"\"tetris\" is not published to this user.\n", {"--launch", "tetris"}},
      {"The launch failed: All licences of the profiler are in use. (1400)\n", {"--launch", "profiler"}},

      {"can't be made: Not a directory.\n", {"--folder", folder_.file("wrong") + "/in"}},
      {"The launch failed: The session program Orvane Connection was not found. Please reinstall Orvane. (10)\n",
       {"--launch", "Writer", "--session-program", "/nonexistent"}},
      {"The session program ended with status 1.\n", {"--launch", "Writer", "--session-program", "/bin/false"}},
      {"The session program was killed by signal 9.\n",
       {"--launch", "Writer", "--session-program", script("dying", "kill -9 $$\n")}},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.words);
    broker_.clearFaults();
    if (row.fault) broker_.addFault(*row.fault);
    const Run run = walk(row.options);
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.errors, HasSubstr(row.words));
  }
}

TEST_F(FailureTest, ABrokerForWhichTheCertificateDoesNotVouchGetsNoPassword) {
  const DemoBroker misnamed(farm(), {.useTls = true, .certificateNames = {"broker.example"}});
  const DemoBroker plain(farm());
  const std::string own = folder_.file("own.pem");
  const std::string foreign = folder_.file("foreign.pem");
  writeFile(own, broker_.certificatePem());
  writeFile(foreign, misnamed.certificatePem());
  const struct {
    std::string words, broker, certificate;
  } cases[] = {
      {"certificate subject name", misnamed.url(), foreign},
      {"SSL certificate problem", broker_.url(), foreign},
      {"/nonexistent.pem", broker_.url(), "/nonexistent.pem"},
      {"Only https can show the certificate", plain.url(), own},
  };
  for (const auto& [words, broker, certificate] : cases) {
    const Run run = walk(broker, {"--certificate", certificate});
    EXPECT_EQ(run.status, 1) << words;
    EXPECT_THAT(run.errors, HasSubstr(words));
    for (const DemoBroker* asked : std::initializer_list<const DemoBroker*>{&broker_, &misnamed, &plain})
      EXPECT_TRUE(asked->requests("authenticate").empty());
  }
}

TEST(UsageTest, BadCommandLinesGetTheUsageAndStatusTwo) {
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{}, "Which farm? Give its address with --address.\n"},
      {{"--address", ""}, "Which farm? Give its address with --address.\n"},
      {{"--address"}, "--address needs a value.\n"},
      {{"--address", "h", "--frob", "x"}, "There is no option --frob.\n"},
      {{"--password", "secret", "--address", "h"}, "There is no option --password.\n"},
  };
  for (const auto& [arguments, words] : cases) {
    ChildProcess program(WALKTHROUGH_PROGRAM, arguments);
    EXPECT_EQ(program.end(), 2) << words;
    EXPECT_THAT(program.errors(), testing::StartsWith(words + "\nUsage: walkthrough --address ADDRESS"));
    EXPECT_EQ(program.output(), "");
  }
  ChildProcess help(WALKTHROUGH_PROGRAM, {"--help"});
  EXPECT_EQ(help.end(), 0);
  EXPECT_THAT(help.output(), testing::StartsWith("Usage: "));
}

}  // namespace

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
  const RefusingPort refusing;
  writeFile(folder_.file("wrong"), kPassword + "!\n");
  writeFile(folder_.file("long"), kPassword + std::string(255, 'x'));
  for (const char* blocked : {"no-icon/icons/1.png/x", "no-launch/launch.ovl/x"})
    std::filesystem::create_directories(folder_.file(blocked));
  const std::string longLabel(64, 'a');  // nobody asks the network for a name with such a part

  const struct {
    std::string words;
    std::vector<std::string> options;
    std::optional<Fault> fault{};
  } cases[] = {
      {"Reading the address \"http://h:99999\" failed: Invalid URL specified.\n", {"--broker", "http://h:99999"}},
      {"httpx://h:8080: this is no http or https URL", {"--broker", "httpx://h"}},
      {"resolve host name (6)\n", {"--broker", "http://" + longLabel + ".invalid"}},
      {"server (7)\n", {"--broker", refusing.url("")}},
      {"answers, but not as a broker does", {}, Fault{.kind = Kind::kWrongRoot, .request = "brokerinfo", .times = 0}},
      {"(404)", {}, Fault{.kind = Kind::kStatus, .request = "brokerinfo", .times = 0, .number = 404}},
      {"The log-in failed: The data is invalid. (13)\n",
       {},
       Fault{.kind = Kind::kWrongRoot, .request = "authenticate"}},
      {"Asking about the farm failed: The data is invalid. (13)\n",
       {},
       Fault{.kind = Kind::kWrongRoot, .request = "getfarmproperties"}},
      {"Listing the applications failed: The data is invalid. (13)\n",
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
      {"The log-in failed: Anonymous log-in is not allowed. (1326)\n", {"--user", "", "--password-file", ""}},
      {"The log-in failed: This account is locked. (1909)\n", {"--user", "HAFENWERK\\locked"}},
      {"There is nothing to launch.\n", {"--user", "HAFENWERK\\guest"}},
      {"\"tetris\" is not published to this user.\n", {"--application", "tetris"}},
      {"The launch failed: All licences of the profiler are in use. (1400)\n", {"--application", "profiler"}},

      {"can't be made: Not a directory.\n", {"--folder", folder_.file("wrong") + "/in"}},
      {"icons/1.png can't be written: Is a directory.\n", {"--folder", folder_.file("no-icon")}},
      {"launch.ovl can't be written.\n", {"--folder", folder_.file("no-launch")}},
      {"The session program /nonexistent can't be started: No such file or directory.\n",
       {"--session-program", "/nonexistent"}},
      {"The session program ended with status 1.\n", {"--session-program", "/bin/false"}},
      {"The session program was killed by signal 9.\n", {"--session-program", script("dying", "kill -9 $$\n")}},
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

TEST_F(FailureTest, ABrokerForWhichTheCertificateDoesNotVouchIsToldNothing) {
  const DemoBroker misnamed(farm(), {.useTls = true, .certificateNames = {"broker.example"}});
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
      {"left out, since only https", "http" + broker_.url().substr(5), own},
  };
  for (const auto& [words, broker, certificate] : cases) {
    const Run run = walk(broker, {"--certificate", certificate});
    EXPECT_EQ(run.status, 1) << words;
    EXPECT_THAT(run.errors, HasSubstr(words));
    EXPECT_TRUE(broker_.requests().empty() && misnamed.requests().empty()) << words;
  }
}

TEST(UsageTest, BadCommandLinesGetTheUsageAndStatusTwo) {
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{}, "Which broker? Give its address with --broker.\n"},
      {{"--broker", ""}, "Which broker? Give its address with --broker.\n"},
      {{"--broker"}, "--broker needs a value.\n"},
      {{"--broker", "h", "--frob", "x"}, "There is no option --frob.\n"},
      {{"--password", "secret", "--broker", "h"}, "There is no option --password.\n"},
  };
  for (const auto& [arguments, words] : cases) {
    ChildProcess program(WALKTHROUGH_PROGRAM, arguments);
    EXPECT_EQ(program.end(), 2) << words;
    EXPECT_THAT(program.errors(), testing::StartsWith(words + "\nUsage: walkthrough --broker ADDRESS"));
    EXPECT_EQ(program.output(), "");
  }
  ChildProcess help(WALKTHROUGH_PROGRAM, {"--help"});
  EXPECT_EQ(help.end(), 0);
  EXPECT_THAT(help.output(), testing::StartsWith("Usage: "));
}

}  // namespace

#include <csignal>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>

#include "Platform/Linux/PosixProcessStarter.h"
#include "Support/ChildProcess.h"
#include "Support/OvWriteLog.h"
#include "Support/PumpedQueue.h"
#include "Support/TemporaryFolder.h"

namespace {

class PosixProcessStarterTest : public testing::Test {
 protected:
  PosixProcessStarterTest() { mkfifo(pipe().c_str(), 0600); }

  // A pipe to the test, by name.
  std::string pipe() const { return folder_.file("pipe"); }
  // Waits for somebody to write to the pipe and close it.
  std::string heard() const { return contentOf(pipe()); }
  bool startShell(const std::string& script, const std::string& workingDirectory = "") {
    return starter_.start("/bin/sh", {"-c", script, pipe()}, workingDirectory,
                          [this](bool succeeded) { succeeded_ = succeeded; });
  }

  const TemporaryFolder folder_{};
  const std::shared_ptr<PumpedQueue> queue_ = std::make_shared<PumpedQueue>();  // pumping it waits for the program
  orvane::PosixProcessStarter starter_{queue_};
  std::optional<bool> succeeded_{};
};

TEST_F(PosixProcessStarterTest, GivesTheArgumentsAsTheyAre) {
  const std::vector<std::string> arguments = {"-c",   "cat /proc/$$/cmdline > \"$0\"; :",
                                              pipe(), "a b",
                                              "\"",   "it's",
                                              "",     "; $(touch sign) `id` | & > < *",
                                              "--",   "\\",
                                              "\n",   "Gr\xC3\xBC\xC3\x9F",
                                              "\xFF", "%s"};
  std::string expected = "/bin/sh";
  for (const std::string& argument : arguments) expected += '\0' + argument;
  ASSERT_TRUE(starter_.start("/bin/sh", arguments, ""));
  EXPECT_EQ(heard(), expected + '\0');
  queue_->pump();
}

TEST_F(PosixProcessStarterTest, InheritsNothingThatWouldDisturb) {
  for (const int signal : {SIGPIPE, SIGINT, SIGCHLD, SIGHUP}) std::signal(signal, SIG_IGN);
  std::signal(SIGTERM, [](int) {});
  sigset_t all;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, nullptr);
  ASSERT_EQ(dup2(open("/", O_RDONLY | O_DIRECTORY), 300), 300);  // two files that aren't closed on exec
  ASSERT_TRUE(starter_.start("/bin/sed", {"-n", "/^Sig[BI]/w " + pipe(), "/proc/self/status"}, ""));
  // The C library keeps its own two signals, 32 and 33, from a program that doesn't know them.
  EXPECT_THAT(heard(), testing::MatchesRegex("SigBlk:\t0{16}\nSigIgn:\t0{7}[01][08]0{7}\n"));
  // No other program here: the shell changes its own files and signals to run one.
  ASSERT_TRUE(startShell(R"(
    exec 9> "$0"
    for file in /proc/$$/fd/*; do
      if [ $file -ef /dev/null ]; then echo null >&9; elif [ -e $file ]; then echo ${file##*/} >&9; fi
    done
    read process name state parent group session rest < /proc/$$/stat
    [ $session = $$ ] && echo leader >&9
    pwd >&9)",
                         folder_.path()));
  EXPECT_EQ(heard(), "null\nnull\nnull\n9\nleader\n" + folder_.path().string() + "\n");
  queue_->pump();
}

TEST_F(PosixProcessStarterTest, NeverHoldsUpAProgramThatWrites) {
  ASSERT_TRUE(startShell("head -c 10000000 /dev/zero && head -c 10000000 /dev/zero >&2 && echo written > \"$0\""));
  EXPECT_EQ(heard(), "written\n");
  queue_->pump();
  EXPECT_EQ(succeeded_, true);
}

TEST_F(PosixProcessStarterTest, ClearsAwayWhatHasEndedAndNothingElse) {
  ChildProcess other("/bin/sh", {"-c", "exit 5"});
  EXPECT_EQ(other.line(), "");  // it has ended, or is about to
  for (const auto& [end, succeeded] :
       {std::pair{"exit 0", true}, std::pair{"exit 3", false}, std::pair{"kill -9 $$", false}}) {
    SCOPED_TRACE(end);
    ASSERT_TRUE(startShell(std::string("echo $$ > \"$0\"; ") + end));
    const int process = std::stoi(heard());
    ASSERT_TRUE(queue_->pumpOne());
    EXPECT_EQ(succeeded_, succeeded);
    EXPECT_EQ(kill(process, 0), -1);
    EXPECT_EQ(errno, ESRCH);
  }
  EXPECT_EQ(other.end(), 5);
}

TEST_F(PosixProcessStarterTest, SaysWhatItCanNotStart) {
  const std::string log = folder_.file("log"), noProgram = folder_.file("text");
  writeFile(noProgram, "text");
  OvSetLogFile(log.c_str());
  const struct {
    std::string executable, argument, workingDirectory;
  } cases[] = {
      {folder_.file("absent"), "", ""},
      {noProgram, "", ""},
      {folder_.path(), "", ""},
      {"no-such-program-anywhere", "", ""},
      {"", "", ""},
      {"/bin/true", "", folder_.file("absent")},
      {"/bin/true", "", noProgram},
      {"/bin/true", std::string("a\0b", 3), ""},
      {std::string("/bin/true\0b", 11), "", ""},
      {"/bin/true", std::string(1 << 20, 'x'), ""},
  };
  for (const auto& [executable, argument, workingDirectory] : cases) {
    SCOPED_TRACE(executable + " in " + workingDirectory);
    EXPECT_FALSE(starter_.start(executable, {argument}, workingDirectory));
    EXPECT_THAT(contentOf(log), testing::HasSubstr("can't start \"" + std::string(executable.c_str()) + "\""));
    OvDeleteLog();
  }
  EXPECT_EQ(queue_->size(), 0U);
}

}  // namespace

#include <csignal>
#include <cstdio>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "RawClient.h"
#include "Support/TemporaryFolder.h"

namespace {

/// The demo-broker program with its standard output in a pipe.
class Program {
 public:
  explicit Program(std::vector<std::string> arguments) {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("pipe");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
    posix_spawn_file_actions_addclose(&actions, ends[0]);
    arguments.insert(arguments.begin(), DEMO_BROKER_PROGRAM);
    std::vector<char*> pointers;
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    if (posix_spawn(&process_, DEMO_BROKER_PROGRAM, &actions, nullptr, pointers.data(), environ) != 0) {
      throw std::runtime_error("posix_spawn");
    }
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    output_ = fdopen(ends[0], "r");
  }
  ~Program() { fclose(output_); }

  std::string line() {
    char text[1024] = "";
    return fgets(text, sizeof text, output_) ? text : "";
  }
  /// The exit status, after `signal` unless it is 0.
  int end(int signal) {
    if (signal != 0) kill(process_, signal);
    int status = 0;
    waitpid(process_, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  pid_t process_ = 0;
  FILE* output_ = nullptr;
};

TEST(ProgramTest, ServesTheSampleFarmAndShowsNoSecret) {
  const TemporaryFolder folder;
  Program program({"--certificate-out", folder.file("broker.pem"), "--host", "broker.example"});
  const std::string first = program.line();
  ASSERT_THAT(first, testing::StartsWith("port: "));
  const int port = std::stoi(first.substr(6));

  httplib::SSLClient client("127.0.0.1", port);
  client.set_ca_cert_path(folder.file("broker.pem").c_str());
  client.enable_server_certificate_verification(true);
  ASSERT_TRUE(client.Get("/gw/proxy/config.xml?ticket=secret"));
  ASSERT_TRUE(client.Post("/gw/proxy", logInRequest("HAFENWERK", "demo", "demo"), "text/xml"));
  EXPECT_EQ(program.line(), "GET /gw/proxy/config.xml \n");
  EXPECT_EQ(program.line(), "POST /gw/proxy authenticate\n");
  EXPECT_EQ(program.end(SIGTERM), 0);
}

TEST(ProgramTest, RefusesBadOptionsWithStatusTwoAndBadFarmsWithOne) {
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{"--frob"}, "demo-broker: unknown option --frob\n"},
      {{"--port", "x"}, "demo-broker: \"x\" is no port\n"},
      {{"--port"}, "demo-broker: --port needs a value\n"},
      {{"--http", "--certificate-out", "/tmp/x"}, "demo-broker: there is no certificate with --http\n"}};
  for (const auto& [arguments, message] : cases) {
    Program program(arguments);
    EXPECT_EQ(program.line(), message);
    EXPECT_EQ(program.end(0), 2);
  }
  Program program({"--farm", "/nonexistent/farm.xml"});
  EXPECT_EQ(program.line(), "demo-broker: /nonexistent/farm.xml: the file can't be read\n");
  EXPECT_EQ(program.end(0), 1);
}

}  // namespace

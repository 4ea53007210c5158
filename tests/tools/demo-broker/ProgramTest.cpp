#include <csignal>

#include "RawClient.h"
#include "Support/ChildProcess.h"
#include "Support/TemporaryFolder.h"

namespace {

TEST(ProgramTest, ServesTheSampleFarmAndShowsNoSecret) {
  const TemporaryFolder folder;
  ChildProcess program(DEMO_BROKER_PROGRAM,
                       {"--certificate-out", folder.file("broker.pem"), "--host", "broker.example"});
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
    ChildProcess program(DEMO_BROKER_PROGRAM, arguments);
    EXPECT_EQ(program.end(), 2);
    EXPECT_THAT(program.errors(), testing::StartsWith(message));
  }
  ChildProcess program(DEMO_BROKER_PROGRAM, {"--farm", "/nonexistent/farm.xml"});
  EXPECT_EQ(program.end(), 1);
  EXPECT_EQ(program.errors(), "demo-broker: /nonexistent/farm.xml: the file can't be read\n");
}

}  // namespace

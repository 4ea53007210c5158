#include <csignal>
#include <regex>

#include <png.h>
#include <unistd.h>

#include "Crypto/crypto.h"
#include "Support/ChildProcess.h"
#include "Support/DnsServerOfTest.h"
#include "WalkthroughTest.h"

using namespace orvane::demo;
using testing::HasSubstr;
using testing::Not;

namespace {

// Leaves what it was started with in the folder of the launch file, and becomes the session program.
constexpr const char kWitness[] =
    "folder=$(dirname \"$2\")\n"
    "cat /proc/$$/cmdline /proc/$$/environ /proc/$PPID/cmdline >\"$folder/started\"\n"
    "stat -c %a \"$2\" >\"$folder/mode\"\n"
    "cp \"$2\" \"$folder/copy.ovl\"\n"
    "exec '" DEMO_SESSION_PROGRAM "' \"$@\"\n";

// The whole file as a picture: its width and height, or "none".
std::string sizeOfPng(const std::string& file) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_file(&image, file.c_str())) return "none";
  std::vector<unsigned char> pixels(PNG_IMAGE_SIZE(image));
  if (!png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr)) return "none";
  return std::to_string(image.width) + " x " + std::to_string(image.height);
}

using WholeWayTest = WalkthroughTest;

TEST_F(WholeWayTest, FromTheTypedAddressToTheSessionProgram) {
  const std::string certificate = folder_.file("certificate.pem");
  writeFile(certificate, broker_.certificatePem());
  const Run run =
      walk("127.0.0.1:" + std::to_string(broker_.port()), {"--certificate", certificate, "--log", folder_.file("log")});
  ASSERT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(run.errors, "");
  const FarmDescription farm = WalkthroughTest::farm();
  const std::string count = std::to_string(farm.applications.size());
  for (const std::string& line :
       {"Its broker is at " + broker_.url() + ".", std::string("Logged in as HAFENWERK\\demo."),
        "The farm is \"" + farm.name + "\".",
        count + " applications are published:", count + " icons are in " + folder_.file("icons") + "."})
    EXPECT_THAT(run.output, HasSubstr(line + "\n"));
  for (const Application& application : farm.applications) {
    const std::string& shown = application.shortcut.empty() ? application.name : application.shortcut;
    EXPECT_THAT(run.output, HasSubstr("\n  " + application.folder + "\n"));
    EXPECT_THAT(run.output, HasSubstr("\n    " + shown + "\n"));
  }

  for (size_t number = 1; number <= farm.applications.size(); ++number) {
    EXPECT_EQ(sizeOfPng(folder_.file("icons/" + std::to_string(number) + ".png")), "32 x 32");
  }

  const std::string log = contentOf(folder_.file("log"));
  EXPECT_THAT(log, HasSubstr("<launchapplication-rsp>"));
  EXPECT_THAT(log, Not(HasSubstr(kPassword)));
  EXPECT_EQ(std::filesystem::status(folder_.file("log")).permissions(), std::filesystem::perms(0600));
}

TEST_F(WholeWayTest, FromAnEmailAddress) {
  // A broker is looked for at the usual ports; each address of the machine's own network has its own.
  const std::string ip =
      "127.83." + std::to_string(getpid() / 250 % 250 + 1) + "." + std::to_string(getpid() % 250 + 1);
  const DemoBroker broker(farm(), {.port = 8080, .ip = ip});
  const DnsServerOfTest dns({"--srv-host=_orvane._tcp.example.test,127.83.0.1,443,1",
                             "--srv-host=_orvane._tcp.example.test," + ip + ",443,2"});
  const Run run = walk("demo@example.test", {"--dns", dns.address(), "--launch", "Writer", "--launch", "Intranet"});
  ASSERT_EQ(run.status, 0) << run.errors;
  for (const std::string& line : {"Its broker is at " + broker.url() + ".", std::string("Session 1: is running."),
                                  std::string("It would open https://intranet.hafenwerk.example/ on this computer.")})
    EXPECT_THAT(run.output, HasSubstr(line + "\n"));
}

TEST_F(WholeWayTest, TheLaunchFileIsEncipheredPrivateAndGoneInTheEnd) {
  const std::string witness = script("witness", kWitness);
  const struct {
    std::string name, secret, shown;
  } cases[] = {{"writer", "password", "Password: ********"}, {"ledger", "ticket", "Ticket: ********"}};
  for (const auto& [name, secret, shown] : cases) {
    const Run run = walk({"--launch", name, "--session-program", witness});
    ASSERT_EQ(run.status, 0) << run.errors;
    EXPECT_THAT(run.output, HasSubstr("\n  " + shown + "\n"));
    EXPECT_FALSE(std::filesystem::exists(folder_.file(name)));
    EXPECT_EQ(contentOf(folder_.file("mode")), "600\n");
    const std::string started = contentOf(folder_.file("started"));
    EXPECT_THAT(started, HasSubstr("--ovl" + std::string(1, '\0') + folder_.file(name)));
    EXPECT_THAT(started, HasSubstr("--password-file"));  // the walkthrough's own arguments
    expectNoSecret(started);

    std::string content = contentOf(folder_.file("copy.ovl"));
    EXPECT_THAT(content, Not(HasSubstr("username")));
    content.resize(crypto_decrypt_buffer(reinterpret_cast<unsigned char*>(content.data()), content.size()));
    EXPECT_THAT(content, HasSubstr("username:u:demo\n"));
    EXPECT_THAT(content, HasSubstr("\n" + secret + ":u:"));
    EXPECT_THAT(content, Not(HasSubstr(kPassword)));
  }
}

TEST_F(WholeWayTest, WhatFitsARunningSessionGoesThereAndWhatDoesNotStartsAnother) {
  const struct {
    const char* second;
    const char* words;
  } cases[] = {
      {"Spreadsheet", "\nIt goes to a session that is running.\n"},
      {"ledger", "\nSession 2: is running.\n"},  // on another server
  };
  for (const auto& [second, words] : cases) {
    const Run run = walk({"--launch", "Writer", "--launch", second});
    ASSERT_EQ(run.status, 0) << run.errors;
    for (const char* line : {words, "\nSession 1: would disconnect.\n", "\nSession 1: has ended.\n"})
      EXPECT_THAT(run.output, HasSubstr(line));
  }
}

// Several walks, the later ones into faults.
TEST_F(WholeWayTest, TheBrokerProgramShowsNoSecretEither) {
  writeFile(folder_.file("wrong"), kPassword + "!\n");
  writeFile(folder_.file("farm.xml"), R"(<farm name="Small"><user name="demo" password=")" + kPassword + R"("/>
      <configuration guid="{G}" timestamp="1" path="config.xml"/>
      <file path="config.xml" type="text/xml" source="config.xml" fill-in="yes"/>
      <application name="a" path="a.exe" servername="S" ticket="5D2C7E90F3"/>
      <fault request="authenticate" nth="2" kind="wrong-root"/>
      <fault request="getapplicationlist" nth="2" kind="cut" bytes="20"/>
      <fault request="launchapplication" nth="2" kind="error" errorcode="5"/></farm>)");
  writeFile(folder_.file("config.xml"),
            "<ServerFarms><Farm><Location Name='L' TCPPort='${port}' ServerList='${host}' "
            "Protocol='${https}'/></Farm></ServerFarms>");
  ChildProcess broker(DEMO_BROKER_PROGRAM, {"--farm", folder_.file("farm.xml")});
  const std::string port = broker.line();
  ASSERT_THAT(port, testing::StartsWith("port: "));
  const std::string url = "https://127.0.0.1:" + std::to_string(std::stoi(port.substr(6)));
  const std::pair<std::vector<std::string>, std::string> walks[] = {
      {{"--log", folder_.file("log")}, ""},
      {{}, "The log-in failed: The data is invalid. (13)\n"},
      {{}, "The launch failed: The broker gave no reason. (5)\n"},
      {{"--password-file", folder_.file("wrong")},
       "The log-in failed: The user name or password is incorrect. (1326)\n"},
  };
  std::string said;
  for (const auto& [options, errors] : walks) {
    const Run run = walk(url, options);
    EXPECT_EQ(run.errors, errors);
    said += run.output + run.errors;
  }
  EXPECT_EQ(broker.end(SIGTERM), 0);
  said += broker.output() + broker.errors();
  EXPECT_THAT(said, HasSubstr("POST / launchapplication\n"));
  expectNoSecret(said);
  const std::string log = contentOf(folder_.file("log"));
  std::smatch cookie;
  ASSERT_TRUE(std::regex_search(log, cookie, std::regex("<cookie>([0-9a-f]{32})</cookie>")));
  EXPECT_THAT(said, Not(HasSubstr(cookie[1].str())));
}

}  // namespace

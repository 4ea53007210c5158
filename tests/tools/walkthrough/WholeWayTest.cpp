#include <csignal>
#include <regex>

#include <png.h>

#include "Crypto/crypto.h"
#include "Support/ChildProcess.h"
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
       {"The broker answers at " + broker_.url() + ".", std::string("Logged in as HAFENWERK\\demo."),
        "The farm is \"" + farm.name + "\".", count + " icons are in " + folder_.file("icons") + "."})
    EXPECT_THAT(run.output, HasSubstr(line + "\n"));
  for (size_t i = 0; i < farm.applications.size(); ++i) {
    const Application& application = farm.applications[i];
    const std::string& shown = application.shortcut.empty() ? application.name : application.shortcut;
    EXPECT_THAT(run.output, HasSubstr("\n  " + application.folder + "\n"));
    EXPECT_THAT(run.output, HasSubstr("\n    " + shown + "\n"));
    EXPECT_EQ(sizeOfPng(folder_.file("icons/" + std::to_string(i + 1) + ".png")), "32 x 32") << shown;
  }

  const std::string log = contentOf(folder_.file("log"));
  EXPECT_THAT(log, HasSubstr("<launchapplication-rsp>"));
  EXPECT_THAT(log, Not(HasSubstr(kPassword)));
  EXPECT_EQ(std::filesystem::status(folder_.file("log")).permissions(), std::filesystem::perms(0600));
}

TEST_F(WholeWayTest, TheLaunchFileIsEncipheredPrivateAndGoneInTheEnd) {
  const std::string witness = script("witness", kWitness);
  const struct {
    std::string application, secret, shown;
  } cases[] = {{"Writer", "password", "Password: ********"}, {"ledger", "ticket", "Ticket: ********"}};
  for (const auto& [application, secret, shown] : cases) {
    const Run run = walk({"--application", application, "--second", application, "--session-program", witness});
    ASSERT_EQ(run.status, 0) << run.errors;
    EXPECT_THAT(run.output, HasSubstr("\n  " + shown + "\n"));
    EXPECT_FALSE(std::filesystem::exists(folder_.file("launch.ovl")));
    EXPECT_EQ(contentOf(folder_.file("mode")), "600\n");
    const std::string started = contentOf(folder_.file("started"));
    EXPECT_THAT(started, HasSubstr("--ovl" + std::string(1, '\0') + folder_.file("launch.ovl")));
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
      {"Spreadsheet", "\nIt goes to session 1, which is running.\n"},
      {"ledger", "\nSession 2: is running.\n"},  // on another server
  };
  for (const auto& [second, words] : cases) {
    const Run run = walk({"--application", "Writer", "--second", second});
    ASSERT_EQ(run.status, 0) << run.errors;
    for (const char* line : {words, "\nSession 1: would disconnect.\n", "\nSession 1: has ended.\n"})
      EXPECT_THAT(run.output, HasSubstr(line));
  }
}

// Several walks, the later ones into faults.
TEST_F(WholeWayTest, TheBrokerProgramShowsNoSecretEither) {
  writeFile(folder_.file("wrong"), kPassword + "!\n");
  writeFile(folder_.file("farm.xml"), R"(<farm name="Small"><user name="demo" password=")" + kPassword + R"("/>
      <application name="a" path="a.exe" servername="S" ticket="5D2C7E90F3"/>
      <fault request="authenticate" nth="2" kind="wrong-root"/>
      <fault request="getapplicationlist" nth="2" kind="cut" bytes="20"/>
      <fault request="launchapplication" nth="2" kind="error" errorcode="5"/></farm>)");
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

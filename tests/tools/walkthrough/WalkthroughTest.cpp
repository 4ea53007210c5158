#include "WalkthroughTest.h"

#include "Support/ChildProcess.h"
#include "demo-broker/FarmFile.h"

using namespace orvane::demo;

const std::string WalkthroughTest::kPassword = "Kiel-7531-Größe";

FarmDescription WalkthroughTest::farm() {
  FarmDescription farm = sampleFarm();
  farm.users.push_back({.domain = "HAFENWERK", .name = "locked", .refusal = Refusal{1909, "This account is locked."}});
  farm.users.push_back({.domain = "HAFENWERK", .name = "guest"});
  for (User& user : farm.users) user.password = kPassword;
  return farm;
}

WalkthroughTest::Run WalkthroughTest::walk(const std::string& broker, const std::vector<std::string>& more) const {
  std::vector<std::string> arguments = {"--address",       broker, "--user",   "HAFENWERK\\demo",
                                        "--password-file", "-",    "--folder", folder_.path()};
  arguments.insert(arguments.end(), more.begin(), more.end());
  ChildProcess program(WALKTHROUGH_PROGRAM, arguments, kPassword + "\n");
  const int status = program.end();
  expectNoSecret(program.output() + program.errors());
  return {status, program.output(), program.errors()};
}

void WalkthroughTest::expectNoSecret(const std::string& text) const {
  std::vector<std::string> secrets = {kPassword};
  for (const Application& application : farm().applications) {
    if (application.launch.contains("ticket")) secrets.push_back(application.launch.at("ticket"));
  }
  for (const RecordedRequest& request : broker_.requests()) {
    if (const std::string cookie = request.field("cookie"); !cookie.empty()) secrets.push_back(cookie);
  }
  for (const std::string& secret : secrets) EXPECT_THAT(text, testing::Not(testing::HasSubstr(secret)));
}

std::string WalkthroughTest::script(const std::string& name, const std::string& commands) const {
  const std::string path = folder_.file(name);
  writeFile(path, "#!/bin/sh\n" + commands);
  std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  return path;
}

#include <future>

#include "FlowFixture.h"
#include "LaunchFixture.h"
#include "OrvaneCommon/LocalizedText.h"
#include "Support/OvWriteLog.h"

using namespace orvane::demo;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

FarmDescription farmWithApplications() {
  FarmDescription farm;
  farm.users = {{.name = "ann", .password = "Schlüssel-4711"}};
  const auto application = [](const char* name, int type, const char* path) {
    return Application{.name = name, .path = path, .type = type, .launch = {{"servername", "APP01"}}};
  };
  farm.applications = {application("Word", 1, "winword.exe"), application("Handbook", 4, "www.example.test/handbook"),
                       application("Secret", 1, "secret.exe")};
  farm.applications.back().refusal = Refusal{5, "Not for you."};
  return farm;
}

class LaunchFlowTest : public testing::Test, protected LaunchFixture {
 protected:
  LaunchFlowTest() {
    flow.mainQueue->pump();  // the store is read
    farm->display().setWidth(1921);
    farm->display().setFullscreen(false);
    location->setDoUseSsl(true);
    location->setSslGateway("gate.example.test");
    OvBrokerClient& client = *farm->brokerClient();
    client.setURL(broker.url());
    client.setUsername("ann");
    client.setPassword("Schlüssel-4711");
    OvSetLogFile(folder.file("log").c_str());
    OvSetLogLevel(4);
  }

  // What the completion was told, if it was called, when the farm's queue is idle again.
  std::optional<OvError> launch(const std::string& appName, bool withLocation = true) {
    auto told = std::make_shared<std::optional<OvError>>();
    task = flow.controller->launchApp(farm, withLocation ? location : nullptr, appName,
                                      [told](const OvError* error) { *told = error ? *error : OvError(); });
    EXPECT_TRUE(flow.runUntilIdle(*farm));
    return *told;
  }

  FlowFixture flow{"127.0.0.1:1", launcher};
  std::function<void()> onLaunch = [] {};
  DemoBroker broker{farmWithApplications(), {.onRequest = [this](const RecordedRequest& request) {
                      if (request.message == "launchapplication") onLaunch();
                    }}};
  const std::shared_ptr<OvFarm> farm = std::make_shared<OvFarm>();
  const std::shared_ptr<OvLocation> location = OvLocation::location();
  std::shared_ptr<PendingTask> task;
};

TEST_F(LaunchFlowTest, AnApplicationStartsASessionProgramWithItsRecord) {
  writeFile(launches + "/Word", "of an earlier launch");
  EXPECT_EQ(launch("Word"), OvError());
  EXPECT_EQ(starter->command, program + "|--ovl|" + launches + "/Word1|" + folder.path().string());
  ASSERT_TRUE(starter->record);
  EXPECT_STREQ(starter->record->getProgramFullPath(), "\"winword.exe\"");
  EXPECT_STREQ(starter->record->getPassword(), "Schlüssel-4711");
  EXPECT_STREQ(starter->record->getSSLGateway(), "gate.example.test");
  EXPECT_EQ(starter->record->getDesktopWidth(), 1920);
  EXPECT_THAT(launchFiles(), ElementsAre("Word"));  // the record has its file removed
  const std::string log = contentOf(folder.file("log"));
  EXPECT_THAT(log, HasSubstr("Unable to share session, start a new one\n"));
  EXPECT_THAT(log, HasSubstr("launchApplicationWithSettings: YES\n"));
  EXPECT_THAT(log, testing::Not(HasSubstr("4711")));
}

TEST_F(LaunchFlowTest, WhatStartsNoSessionProgramLeavesNoFile) {
  EXPECT_EQ(launch("Handbook"), OvError());
  EXPECT_THAT(opener->takeActions(), ElementsAre("open http://www.example.test/handbook"));
  EXPECT_EQ(launch("Secret"), (OvError{5, "Not for you."}));
  EXPECT_EQ(launch("Word", false), (OvError{8, orvane::localizedText("Farm.NSException.Location.MessageNotSelected")}));
  const std::string whole = program;
  for (const std::string& missing : {folder.file("missing"), folder.path().string(), std::string()}) {
    program = missing;
    EXPECT_EQ(launch("Word").value_or(OvError()).code, 10) << missing;
  }
  EXPECT_THAT(launchFiles(), ElementsAre());
  program = whole;
  launches = "";
  EXPECT_EQ(launch("Word"), (OvError{9, orvane::localizedText("OvBrokerClientController.Error.SaveOvl")}));
  EXPECT_EQ(starter->command, "");
}

TEST_F(LaunchFlowTest, ACancelledLaunchEndsWithoutAWord) {
  onLaunch = [&] { task->cancel(); };
  EXPECT_EQ(launch("Word"), std::nullopt);
  EXPECT_EQ(launch("Secret"), std::nullopt);
  EXPECT_EQ(starter->command, "");
  EXPECT_THAT(launchFiles(), ElementsAre());
  EXPECT_THAT(contentOf(folder.file("log")), HasSubstr("launchApp: Launch application has been cancelled\n"));

  onLaunch = [] {};
  starter->onStart = [&] { task->cancel(); };
  EXPECT_EQ(launch("Word"), std::nullopt);
  EXPECT_TRUE(starter->record);
}

TEST_F(LaunchFlowTest, AllSessionsAreDisconnected) {
  struct Session : OvSessionObserver {
    void disconnectSession(uint32_t) override { isDisconnected.set_value(); }
    void logoffSession(uint32_t) override {}
    void startApplication(uint32_t, const char*, const char*) override {}
    void activateSessionView(uint32_t) override {}
    std::promise<void> isDisconnected;
  } sessions[2];
  OvSessionManager manager;
  std::vector<uint32_t> ids;
  for (Session& session : sessions) ids.push_back(manager.addSession(OvSettings(), &session));
  flow.controller->disconnectAllOpenedSessions();
  for (Session& session : sessions) {
    EXPECT_EQ(session.isDisconnected.get_future().wait_for(PumpedQueue::kPatience), std::future_status::ready);
  }
  for (const uint32_t id : ids) EXPECT_EQ(manager.removeSession(id), 1);  // waits for the call that it may be in
}

}  // namespace

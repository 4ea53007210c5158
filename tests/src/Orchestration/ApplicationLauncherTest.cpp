#include <sys/stat.h>

#include "Crypto/crypto.h"
#include "LaunchFixture.h"
#include "OrvaneCommon/LocalizedText.h"
#include "Support/HomeOfTest.h"
#include "demo-broker/DemoBroker.h"

using namespace orvane::demo;
using testing::ElementsAre;

namespace {

struct ApplicationLauncherTest : testing::Test, LaunchFixture {
  const HomeOfTest home;
};

// Writes down what it is told.
struct Observer : OvSessionObserver {
  void logoffSession(uint32_t) override { told.push_back("log off"); }
  void disconnectSession(uint32_t) override { told.push_back("disconnect"); }
  void startApplication(uint32_t, const char* program, const char* workingDir) override {
    told.push_back(std::string(program) + "|" + workingDir);
  }
  void activateSessionView(uint32_t) override { told.push_back("activate"); }
  std::vector<std::string> told;
};

OvSettings recordFor(const std::string& program, const char* workingDir = nullptr) {
  OvSettings record;
  record.setServerName("APP01,APP02");
  record.setProgramFullPath(program.c_str());
  record.setProgramWorkingDir(workingDir);
  return record;
}

TEST_F(ApplicationLauncherTest, PreferencesAndScreenAdjustTheRecord) {
  struct Display {
    int seamless;
    bool fullScreen;
    int width, height;
    auto operator<=>(const Display&) const = default;
  };
  const struct {
    bool disablesSeamless, wantsWindow, hasScreen;
    Display sent, launched;
  } cases[] = {
      {false, false, true, {1, false, 1921, 1081}, {2, false, 1920, 1080}},
      {true, false, true, {1, true, 1921, 1080}, {0, true, 1920, 1080}},
      {true, false, true, {2, true, 0, 0}, {0, true, 0, 0}},
      {false, true, true, {2, true, 1921, 1081}, {2, false, 1280, 776}},
      {false, true, true, {0, false, 801, -601}, {0, false, 800, -602}},
      {false, true, false, {0, true, 1921, 1081}, {0, false, 0, 0}},
  };
  for (const auto& row : cases) {
    preferences.setForceDisableSeamless(row.disablesSeamless);
    preferences.setFullscreenInMaximizedWindow(row.wantsWindow);
    screens->size = row.hasScreen ? FakeScreens().size : orvane::Screens::Size{};
    OvSettings record;
    record.setSeamless(row.sent.seamless);
    record.setFullScreen(row.sent.fullScreen);
    record.setDesktopWidth(row.sent.width);
    record.setDesktopHeight(row.sent.height);
    record.setRedirectUniversalPrinters(row.hasScreen);
    launcher->applyOrvaneSettings(record);
    EXPECT_TRUE((Display{record.getSeamless(), record.getFullScreen(), record.getDesktopWidth(),
                         record.getDesktopHeight()} == row.launched))
        << row.sent.width;
    EXPECT_FALSE(record.getRedirectUniversalPrinters());
    EXPECT_EQ(record.getRedirectPrinters(), row.hasScreen);
  }
}

TEST_F(ApplicationLauncherTest, LaunchFilesStayInTheirFolderAndNeverMeet) {
  std::filesystem::create_symlink("/nowhere", launches + "/Linked");
  std::string umlauts = "x";
  for (int i = 0; i < 150; ++i) umlauts += "ü";
  const std::pair<std::string, std::string> cases[] = {
      {"Word 2021", "Word 2021"},
      {"Word 2021", "Word 20211"},
      {"Word 2021", "Word 20212"},
      {"Linked", "Linked1"},
      {"../../etc/x", ".._.._etc_x"},
      {"..", "_.."},
      {"", "_"},
      {".", "_."},
      {".x", ".x"},
      {"a\nb\x7F", "a_b_"},
      {umlauts, umlauts.substr(0, 199)},
  };
  for (const auto& [appName, fileName] : cases) {
    EXPECT_EQ(launcher->formatOvlfileNameForApp(appName), launches + "/" + fileName);
    struct stat status {};
    EXPECT_EQ(lstat((launches + "/" + fileName).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode, S_IFREG | 0600u) << fileName;
  }
  for (const std::string& noFolder : {std::string(), folder.file("missing")}) {
    launches = noFolder;
    EXPECT_EQ(launcher->formatOvlfileNameForApp("Word"), std::nullopt);
  }
}

TEST_F(ApplicationLauncherTest, ALivingSessionIsSharedAndDeadOnesAreForgotten) {
  OvSessionManager manager;
  Observer observer;
  const OvSettings session = recordFor("first");
  for (OvSessionObserver* holder : {static_cast<OvSessionObserver*>(nullptr), static_cast<OvSessionObserver*>(nullptr),
                                    static_cast<OvSessionObserver*>(&observer)}) {
    ASSERT_NE(manager.addSession(session, holder), 0u);  // nobody can be told of one without an observer
  }
  EXPECT_FALSE(launcher->startSharedSession(recordFor(std::string(OvSessionManager::kLongestText + 1, 'x'))));
  EXPECT_EQ(manager.getSessionList().size(), 3u);
  OvError error;
  bool isFileInUse = true;
  EXPECT_TRUE(launcher->launchApplicationWithSettings(recordFor("calc"), launches + "/calc", &error, &isFileInUse));
  EXPECT_TRUE(launcher->startSharedSession(recordFor("edit", "C:\\")));
  EXPECT_THAT(observer.told, ElementsAre("calc|", "edit|C:\\"));
  EXPECT_EQ(manager.getSessionList().size(), 1u);
  EXPECT_FALSE(isFileInUse);
  EXPECT_EQ(starter->command, "");
  EXPECT_THAT(launchFiles(), ElementsAre());

  manager.removeSession(manager.findSession(session));
  ASSERT_NE(manager.addSession(session, nullptr), 0u);
  EXPECT_TRUE(launcher->launchApplicationWithSettings(recordFor("calc"), launches + "/calc", &error, &isFileInUse));
  EXPECT_TRUE(isFileInUse);
  EXPECT_EQ(manager.getSessionList().size(), 0u);
  EXPECT_EQ(starter->command, program + "|--ovl|" + launches + "/calc|" + folder.path().string());
}

TEST_F(ApplicationLauncherTest, ALaunchFileFromOutsideIsLaunchedOrSaysWhyNot) {
  FarmDescription farm;
  farm.files = {{.path = "good.ovl", .content = "servername:u:APP03\ndesktopwidth:i:801\n", .encipher = true},
                {.path = "gone.ovl", .content = "servername:u:APP04\ndeletefile:i:1\n"},
                {.path = "moved.ovl"},
                {.path = "moved.too.ovl"}};
  DemoBroker broker(farm);
  for (const auto& [from, to] : {std::pair{"/moved.ovl", "/good.ovl"}, {"/moved.too.ovl", "/gone.ovl"}}) {
    broker.addFault(
        {.kind = Fault::Kind::kStatus, .request = from, .times = 0, .number = 301, .text = broker.url() + to});
  }
  const auto pointingTo = [&](const std::string& url) {
    char text[2049] = "";
    crypto_encrypt1024(url.c_str(), text, sizeof text);
    return "url:u:" + std::string(text) + "\n";
  };
  const char* const kUnreadable = "OvBrokerClientController.Error.LoadSettingsFromOvl";
  const char* const kNotFetched = "OvBrokerClientController.Error.LoadOvlFromUrl";
  const struct {
    std::string content, server;
    const char* failure = nullptr;
  } cases[] = {
      {"servername:u:APP05\n", "APP05"},
      {pointingTo(broker.url() + "/good.ovl"), "APP03"},
      {pointingTo(broker.url() + "/moved.ovl"), "APP03"},
      {pointingTo(broker.url() + "/moved.too.ovl"), "APP04"},
      {"", "", kUnreadable},
      {pointingTo(broker.url() + "/missing"), "", "OvBrokerClientController.Error.LoadSettingsFromOvlromUrl"},
      {pointingTo("http://127.0.0.1:1/x"), "", kNotFetched},
      {pointingTo("file://" + program), "", kNotFetched},
      {pointingTo("not an address"), "", kNotFetched},
  };
  const std::string path = launches + "/some.ovl";
  for (const auto& row : cases) {
    writeFile(path, row.content);
    starter->record.reset();
    OvError error;
    EXPECT_EQ(launcher->launchAppWithOvlFile(path, &error), row.failure == nullptr) << row.content;
    EXPECT_EQ(starter->record ? starter->record->getServerName() : "", row.server);
    if (row.failure == nullptr) continue;
    EXPECT_EQ(error, (OvError{9, orvane::localizedText(row.failure)}));
    EXPECT_EQ(contentOf(path), row.content);
    EXPECT_THAT(launchFiles(), ElementsAre("some.ovl"));
    EXPECT_EQ(modeOf(path), 0700u);
  }
  OvError error;
  EXPECT_FALSE(launcher->launchAppWithOvlFile(folder.file("missing"), &error));
  EXPECT_EQ(error, (OvError{9, orvane::localizedText(kUnreadable)}));
  // The user's file outlives an installation without a session program.
  writeFile(path, "servername:u:APP05\n");
  program = folder.file("missing");
  EXPECT_FALSE(launcher->launchAppWithOvlFile(path, &error));
  EXPECT_EQ(error.code, 10);
  EXPECT_EQ(contentOf(path), "servername:u:APP05\n");
}

}  // namespace

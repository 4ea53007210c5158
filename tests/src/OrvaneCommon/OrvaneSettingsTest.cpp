#include <cstdlib>

#include <sys/stat.h>

#include "OrvaneCommon/OrvaneSettings.h"
#include "OrvaneCommon/OvUPaths.h"
#include "Support/HomeOfTest.h"

namespace {

namespace fs = std::filesystem;

// What differs from the defaults, as it would be saved: "<element>value</element>..." in the order of the file.
std::string changesOf(const OrvaneSettings& settings) {
  const std::string defaults = OrvaneSettings("").saveToString();
  std::istringstream lines(settings.saveToString());
  std::string changes;
  for (std::string line; std::getline(lines, line);) {
    if (defaults.find(line + "\n") == std::string::npos) changes += line.substr(line.find('<'));
  }
  return changes;
}

class OrvaneSettingsTest : public testing::Test {
 protected:
  // All files beside the one of the preferences.
  std::vector<fs::path> filesSetAside() const {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(folder_.path())) {
      if (entry.path() != path_) files.push_back(entry.path());
    }
    return files;
  }

  const TemporaryFolder folder_;
  const std::string path_ = folder_.file("OrvaneSettings");
};

TEST_F(OrvaneSettingsTest, TheFileIsAsOthersExpectIt) {
  OrvaneSettings settings(path_);
  EXPECT_EQ(settings.fakeStringForUnitTests(), std::nullopt);
  settings.setPrinterDriverName("Kopierer <3> & Söhne\r\n");
  settings.setActionOnResolutionChange(-2147483647 - 1);
  settings.setDiMode(true);
  settings.setAskBeforeLogoff(false);
  settings.save();
  EXPECT_EQ(contentOf(path_), R"(<?xml version="1.0" encoding="UTF-8"?>
<OrvaneSettings>
  <askBeforeCloseSession>1</askBeforeCloseSession>
  <askBeforeLogoff>0</askBeforeLogoff>
  <askBeforeDeleteConnection>1</askBeforeDeleteConnection>
  <askBeforeClearCredentials>1</askBeforeClearCredentials>
  <logoffOnQuit>0</logoffOnQuit>
  <neededToLog>0</neededToLog>
  <diMode>1</diMode>
  <showTutorialOnStart>1</showTutorialOnStart>
  <forceDisableSeamless>0</forceDisableSeamless>
  <fullscreenInMaximizedWindow>0</fullscreenInMaximizedWindow>
  <enableAdaptiveGraphics>1</enableAdaptiveGraphics>
  <translateCtrlLeftClickToRightClick>0</translateCtrlLeftClickToRightClick>
  <actionOnResolutionChange>-2147483648</actionOnResolutionChange>
  <settingsFileVersion>1</settingsFileVersion>
  <fakeStringForUnitTests />
  <printerDriverName>Kopierer &lt;3&gt; &amp; Söhne)"
                              "\r\n</printerDriverName>\n</OrvaneSettings>\n");
  EXPECT_EQ(OrvaneSettings(path_).saveToString(), settings.saveToString());
  EXPECT_EQ(OrvaneSettings(path_).printerDriverName(), "Kopierer <3> & Söhne\r\n");
  EXPECT_EQ(fs::status(path_).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(OrvaneSettingsTest, ElementsAreReadAsFarAsTheyMakeSense) {
  constexpr const char* kDiMode = "<diMode>1</diMode>";
  const char* const rows[][2] = {
      {"", ""},
      {"<diMode> \n\tYES</diMode>", kDiMode},
      {"<diMode>true</diMode>", kDiMode},
      {"<diMode>9</diMode><diMode>0</diMode>", kDiMode},
      {"<askBeforeLogoff>no</askBeforeLogoff>", "<askBeforeLogoff>0</askBeforeLogoff>"},
      {"<askBeforeLogoff>-1</askBeforeLogoff>", "<askBeforeLogoff>0</askBeforeLogoff>"},
      {"<askBeforeLogoff/>", "<askBeforeLogoff>0</askBeforeLogoff>"},
      {"<actionOnResolutionChange> +2x</actionOnResolutionChange>",
       "<actionOnResolutionChange>2</actionOnResolutionChange>"},
      {"<actionOnResolutionChange>2147483648</actionOnResolutionChange>", ""},
      {"<actionOnResolutionChange>two</actionOnResolutionChange>", ""},
      {"<printerDriverName>R&D<!-- --> &#x31;<![CDATA[>]]></printerDriverName>",
       "<printerDriverName>R&amp;D 1&gt;</printerDriverName>"},
      {"<fakeStringForUnitTests>  </fakeStringForUnitTests>", "<fakeStringForUnitTests>  </fakeStringForUnitTests>"},
      {"<diMode>1", kDiMode},
      {"<diMode>1</diMode></wrong><logoffOnQuit>1</logoffOnQuit>", kDiMode},
  };
  for (const auto& [elements, changes] : rows) {
    writeFile(path_, std::string("<a><settingsFileVersion>1</settingsFileVersion>") + elements + "</a>junk<");
    EXPECT_EQ(changesOf(OrvaneSettings(path_)), changes) << elements;
  }
}

TEST_F(OrvaneSettingsTest, AnOldFileTurnsTwoPreferencesOn) {
  const std::pair<const char*, bool> rows[] = {
      {"", true},
      {"<settingsFileVersion>0.99</settingsFileVersion>", true},
      {"<settingsFileVersion>x</settingsFileVersion>", true},
      {"<settingsFileVersion> 1.0</settingsFileVersion>", false},
      {"<settingsFileVersion>2,5</settingsFileVersion>", false},
  };
  for (const auto& [version, expected] : rows) {
    writeFile(path_, std::string("<a><showTutorialOnStart>0</showTutorialOnStart>"
                                 "<enableAdaptiveGraphics>0</enableAdaptiveGraphics>") +
                         version + "</a>");
    const OrvaneSettings settings(path_);
    EXPECT_EQ(settings.showTutorialOnStart(), expected) << version;
    EXPECT_EQ(settings.enableAdaptiveGraphics(), expected) << version;
  }
}

TEST_F(OrvaneSettingsTest, LoadingAgainKeepsWhatTheFileDoesNotTell) {
  OrvaneSettings settings(path_);
  settings.setDiMode(true);
  settings.setPrinterDriverName("gone");
  settings.setActionOnResolutionChange(2);
  writeFile(path_, "no element");
  settings.load();
  EXPECT_EQ(settings.printerDriverName(), "gone");
  writeFile(path_, "<a/>");
  settings.load();
  EXPECT_EQ(settings.printerDriverName(), "");
  EXPECT_EQ(settings.actionOnResolutionChange(), 2);
  EXPECT_TRUE(settings.diMode());
}

TEST_F(OrvaneSettingsTest, AFileThatCantBeUnderstoodIsSetAsideBeforeItIsReplaced) {
  const std::pair<std::string, bool> rows[] = {
      {"diMode = 1", true},
      {"<a><diMode>1</diMode>\xFF</a>", true},
      {std::string("<\0a\0>\0", 6), true},
      {"", false},
      {" \n", false},
      {"<a", false},
      {"<plist><dict/></plist>", false},
  };
  for (const auto& [text, isSetAside] : rows) {
    SCOPED_TRACE(text);
    writeFile(path_, text);
    OrvaneSettings settings(path_);
    EXPECT_EQ(changesOf(settings), "");
    settings.save();
    settings.save();
    const std::vector<fs::path> aside = filesSetAside();
    ASSERT_EQ(aside.size(), isSetAside ? 1u : 0u);
    if (isSetAside) {
      EXPECT_EQ(contentOf(aside[0]), text);
      fs::remove(aside[0]);
    }
    EXPECT_THAT(contentOf(path_), testing::EndsWith("</OrvaneSettings>\n"));
  }
}

TEST_F(OrvaneSettingsTest, WhatCantBeSetAsideIsNotReplaced) {
  fs::create_directory(path_);
  OrvaneSettings(path_).save();
  EXPECT_TRUE(fs::is_directory(path_));
  EXPECT_TRUE(filesSetAside().empty());
}

TEST_F(OrvaneSettingsTest, TextThatIsNoUtf8DoesNotSpoilTheFile) {
  OrvaneSettings settings(path_);
  settings.setDiMode(true);
  settings.setPrinterDriverName("\xC3");
  settings.save();
  EXPECT_EQ(changesOf(OrvaneSettings(path_)), "<diMode>1</diMode>");
}

TEST_F(OrvaneSettingsTest, AnEmptyPropertyListTakesThePlaceOfAnAbsentFileAndOfNoOther) {
  const HomeOfTest home;
  const std::string path = OvU_GetOrvaneSettingsPath();
  EXPECT_EQ(path, home.path() / ".config/Orvane/OrvaneSettings");
  EXPECT_THAT(contentOf(path), testing::HasSubstr("<dict/>"));
  EXPECT_EQ(changesOf(OrvaneSettings::instance()), "");
  OrvaneSettings::instance().setDiMode(true);
  OrvaneSettings::instance().save();
  EXPECT_TRUE(OrvaneSettings(OvU_GetOrvaneSettingsPath()).diMode());
}

TEST_F(OrvaneSettingsTest, IsReadWhileItIsWritten) {
  OrvaneSettings settings(path_);
  std::jthread reader([&](const std::stop_token& stop) {
    while (!stop.stop_requested()) settings.printerDriverName();
  });
  std::jthread saver([&](const std::stop_token& stop) {
    while (!stop.stop_requested()) settings.save();
  });
  for (int i = 0; i < 1000; ++i) settings.setPrinterDriverName(std::to_string(i));
  saver = {};
  settings.save();
  EXPECT_EQ(OrvaneSettings(path_).printerDriverName(), "999");
}

}  // namespace

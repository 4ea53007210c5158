#include <regex>

#include <gmock/gmock.h>

#include "Controllers/ConnectionSettingsViewController.h"
#include "Support/FakeSecretStore.h"
#include "Support/HomeOfTest.h"
#include "Support/PumpedQueue.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Setting = ConnectionSetting;
using PopUp = ConnectionPopUp;
using Editor = ConnectionSettingsViewController;
using Strings = std::vector<std::string>;

// Writes down what the editor asks for, in order, and holds the question for its answer.
class RecordingDelegate : public ConnectionSettingsDelegate {
 public:
  using Farm = std::shared_ptr<OvFarm>;
  using Window = orvane::AuxiliaryWindow;
  Strings takeActs() { return std::exchange(acts, {}); }

  void connectionSettingsDidFinishEditing(const Farm& farm, int farmState) override {
    acts.push_back("finish " + farm->name() + " " + std::to_string(farmState));
  }
  void connectionSettingsPromptClearingCredentialsForFarm(const Farm& farm, ConfirmationBlock block) override {
    ask("clear " + farm->name(), std::move(block));
  }
  void connectionSettingsPromptCredentialsWithOldCredentials(const OvCredentials&, bool, CredentialsBlock) override {}
  void connectionSettingsPromptConfirmationToDeleteFarmWithBlock(ConfirmationBlock block) override {
    ask("delete", std::move(block));
  }
  void connectionSettingsWantsShowSheetWindow(Window window) override { act(window, "show"); }
  void connectionSettingsWantsHideSheetWindow(Window window) override { act(window, "hide"); }
  void connectionSettingsWantsSaveSetttings() override { acts.emplace_back("save"); }

  Strings acts{};
  ConfirmationBlock question{};

 private:
  void ask(const std::string& what, ConfirmationBlock block) {
    acts.push_back("ask to " + what);
    question = std::move(block);
  }
  void act(Window window, const char* what) { acts.emplace_back(window == Window::kEditLocation ? what : "wrong"); }
};

std::string marks(const std::vector<bool>& flags) {
  std::string text;
  for (const bool flag : flags) text += flag ? '+' : '-';
  return text;
}

class ConnectionSettingsTest : public testing::Test {
 protected:
  ConnectionSettingsTest() { editNewFarm(); }
  void edit() { editor->setupSettingsForFarm(farm, false, false, false); }
  void editNewFarm() {
    farm = std::make_shared<OvFarm>();
    farm->setName("Harbour");
    edit();
  }
  void save(const std::string& user, const std::string& password, const std::string& domain) {
    editor->setChecked(Setting::kSaveCredentials, true);
    editor->setUserName(user);
    editor->setPassword(password);
    editor->setDomain(domain);
  }
  std::string stored() const {
    const OvCredentials& credentials = farm->credentials();
    return credentials.domain() + " " + credentials.username() + " " + credentials.password().text();
  }
  std::string shown() const {
    return editor->domain() + " " + editor->userName() + (editor->hasPassword() ? " *" : " ");
  }

  const HomeOfTest home;
  const std::shared_ptr<PumpedQueue> queue = std::make_shared<PumpedQueue>();
  OvFarmManager manager{home.file("farms"), std::make_shared<MCCachedKeychain>(std::make_shared<FakeSecretStore>()),
                        queue, queue};
  OrvaneSettings settings{home.file("settings")};
  RecordingDelegate delegate{};
  const std::shared_ptr<Editor> editor = Editor::create(manager, delegate, settings, queue);
  std::shared_ptr<OvFarm> farm{};
};

#define READ(expression) [](const OvFarm& each) { return each.expression; }

TEST_F(ConnectionSettingsTest, EachBoxIsStoredAtOnceWhereItBelongs) {
  using enum ConnectionSetting;
  const std::pair<Setting, bool (*)(const OvFarm&)> boxes[] = {
      {kConnectOnStart, READ(doAutoLaunch())},
      {kMultipleMonitors, READ(display().spanMonitors())},
      {kPlayAudio, READ(resourses().sound() == 0)},
      {kRedirectClipboard, READ(resourses().doRedirectClipboard())},
      {kRedirectDrives, READ(resourses().doRedirectDiskDrives())},
      {kSeamless, READ(display().seamless())},
      {kPrinters, READ(resourses().doRedirectPrinters())},
      {kSerialPorts, READ(resourses().doRedirectSerialPorts())},
      {kDesktopBackground, READ(performance().doShowDesktopBackground())},
      {kFontSmoothing, READ(performance().doUseFontSmoothing())},
      {kDesktopComposition, READ(performance().doUseDesktopComposition())},
      {kWindowContent, READ(performance().doShowWindowContent())},
      {kAnimation, READ(performance().doUseAnimation())},
      {kThemes, READ(performance().doUseThemes())},
      {kBitmapCaching, READ(performance().doUseBitmapCaching())},
      {kGraphicsAcceleration, READ(performance().doUseGA())},
      {kSurge, READ(performance().doUseSurge())},
      {kFlashRedirection, READ(performance().doFlashMMR())}};
  for (const auto& [turned, value] : boxes) {
    for (const auto& box : boxes) editor->setChecked(box.first, false);
    delegate.takeActs();
    editor->setChecked(turned, true);
    EXPECT_THAT(delegate.takeActs(), ElementsAre("save"));
    edit();
    for (const auto& [setting, read] : boxes) {
      EXPECT_EQ(read(*farm), setting == turned) << static_cast<int>(setting) << " with " << static_cast<int>(turned);
      EXPECT_EQ(editor->isChecked(setting), setting == turned) << static_cast<int>(setting);
    }
  }
  farm->resourses().setSound(2);
  farm->setDoAutoLaunch(true);
  editor->setupSettingsForFarm(farm, true, false, false);
  EXPECT_TRUE(editor->isChecked(kPlayAudio));
  editor->setChecked(kPlayAudio, false);
  EXPECT_EQ(farm->resourses().sound(), 1);
  EXPECT_FALSE(editor->isShown(kConnectOnStart)) << "of a sole farm";
  editor->setChecked(kConnectOnStart, false);
  EXPECT_TRUE(farm->doAutoLaunch()) << "what is hidden stays";
}

#undef READ

TEST_F(ConnectionSettingsTest, ASpeedSetsTheBoxesThatStayChangeable) {
  using enum ConnectionSetting;
  const Setting boxes[] = {kBitmapCaching, kDesktopBackground, kWindowContent,     kAnimation,
                           kThemes,        kFontSmoothing,     kDesktopComposition};
  const char* const statesBySpeed[] = {"+------", "+---+-+", "+---+-+", "+---+-+", "+++++++", "+++++++"};
  for (size_t item = 0; item < 7; ++item) {
    for (const bool wasOn : {false, true}) {
      for (const Setting box : boxes) editor->setChecked(box, wasOn);
      editor->handlePopUpButtonDidChangeSelection(PopUp::kSpeed, item);
      EXPECT_EQ(farm->performance().connectionSpeed(), static_cast<int>(item) + 1);
      std::vector<bool> flags;
      for (const Setting box : boxes) flags.push_back(editor->isChecked(box));
      EXPECT_EQ(marks(flags), item < 6 ? statesBySpeed[item] : std::string(7, wasOn ? '+' : '-')) << item;
      editor->setChecked(kThemes, !editor->isChecked(kThemes));
      EXPECT_EQ(editor->selectedItem(PopUp::kSpeed), item);
    }
  }
}

TEST_F(ConnectionSettingsTest, StoredNumbersOutsideTheTablesShowAsUsualOnes) {
  const struct {
    int color, shownColor, speed, shownSpeed;
  } rows[] = {{8, 8, 1, 1}, {15, 16, 0, 6}, {16, 16, 8, 6}, {24, 24, 7, 7}, {32, 32, -1, 6}, {0, 32, 5, 5}};
  for (const auto& row : rows) {
    farm->display().setColor(row.color);
    farm->performance().setConnectionSpeed(row.speed);
    edit();
    EXPECT_FALSE(editor->isUndoEnabled()) << "nothing is scanned yet";
    editor->setTitle("Depot");
    EXPECT_EQ(farm->display().color(), row.shownColor) << row.color;
    EXPECT_EQ(farm->performance().connectionSpeed(), row.shownSpeed) << row.speed;
  }
  editor->handlePopUpButtonDidChangeSelection(PopUp::kColors, 0);
  editor->handlePopUpButtonDidChangeSelection(PopUp::kColors, 4);  // there are four
  EXPECT_EQ(farm->display().color(), 8);
}

TEST_F(ConnectionSettingsTest, TheCustomResolutionIsOfferedFirst) {
  const struct {
    bool fullscreen;
    int width, height, customWidth, customHeight;
    const char *first, *shown;
  } rows[] = {{false, 1000, 700, 1000, 700, "1000 × 700", "1000 × 700"},
              {false, 1000, 700, 1000, 0, "640 × 480", "Full screen"},
              {false, 1280, 768, 900, 901, "900 × 901", "1280 × 768"},
              {true, 900, 901, 900, 901, "900 × 901", "Full screen"},
              {false, 800, 600, 1024, 768, "640 × 480", "800 × 600"},
              {false, 0, 0, 0, 0, "640 × 480", "Full screen"}};
  OvDisplay& display = farm->display();
  for (const auto& row : rows) {
    display.setFullscreen(row.fullscreen);
    display.setWidth(row.width);
    display.setHeight(row.height);
    display.setCustomWidth(row.customWidth);
    display.setCustomHeight(row.customHeight);
    edit();
    EXPECT_EQ(editor->items(PopUp::kResolution)[1].title, row.first) << row.shown;
    EXPECT_EQ(editor->selectedTitle(PopUp::kResolution), row.shown) << row.first;
  }
  ASSERT_EQ(editor->items(PopUp::kResolution).size(), 12U);
  const std::pair<size_t, const char*> picks[] = {{11, "1 -1:-1"}, {3, "0 720:576"}, {0, "0 720:576"}};  // 0 is hidden
  for (const auto& [item, stored] : picks) {
    editor->handlePopUpButtonDidChangeSelection(PopUp::kResolution, item);
    const std::string size = std::to_string(display.width()) + ":" + std::to_string(display.height());
    EXPECT_EQ((display.fullscreen() ? "1 " : "0 ") + size, stored) << item;
  }
}

TEST_F(ConnectionSettingsTest, CredentialsAreStoredOnlyIfTheyAreToBeSaved) {
  const struct {
    const char *user, *domain;
    bool anonymous, save;
    const char* enabled;  // the Save box, the user's fields, the domain
    const char *stored, *preview;
  } rows[] = {{"jo", "HAFEN", false, true, "+++", "HAFEN jo secret", "HAFEN\\jo"},
              {"jo", "", false, true, "+++", " jo secret", "jo"},
              {"jo@h", "HAFEN", false, true, "++-", " jo@h secret", "jo@h"},
              {"D\\jo", "HAFEN", false, true, "++-", " D\\jo secret", "D\\jo"},
              {"@jo", "HAFEN", false, true, "+++", "HAFEN @jo secret", "@jo"},
              {"", "HAFEN", false, true, "+++", "HAFEN  secret", "none"},
              {"jo", "HAFEN", false, false, "+--", "  ", "none"},
              {"jo", "HAFEN", true, true, "---", "  ", "none"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.user << (row.anonymous ? " anonymous" : "") << (row.save ? " saved" : ""));
    editNewFarm();
    save(row.user, "secret", row.domain);
    editor->setChecked(Setting::kSaveCredentials, row.save);
    editor->setChecked(Setting::kAnonymousLogin, row.anonymous);
    EXPECT_EQ(stored(), row.stored);
    EXPECT_EQ(editor->credentialsPreview().value_or("none"), row.preview);
    EXPECT_EQ(editor->userName(), row.user) << "the field keeps what was typed";
    EXPECT_EQ(
        marks({editor->isEnabled(Setting::kSaveCredentials), editor->isUserNameEnabled(), editor->isDomainEnabled()}),
        row.enabled);
    edit();
    EXPECT_EQ(shown(), std::regex_replace(row.stored, std::regex("secret"), "*"));
    EXPECT_EQ(marks({editor->isChecked(Setting::kSaveCredentials), editor->isChecked(Setting::kAnonymousLogin)}),
              marks({row.save && !row.anonymous, row.anonymous}));
  }
}

TEST_F(ConnectionSettingsTest, UndoBringsBackCredentialsThatWereChangedAndCleared) {
  save("jo", "secret", "HAFEN");
  farm->credentials().setCredentialsAreValid(false);
  edit();
  editor->setTitle("Depot");
  EXPECT_FALSE(farm->credentials().credentialsAreValid()) << "they are as they were";
  EXPECT_TRUE(editor->isUndoEnabled());
  editor->setPassword("other");
  EXPECT_TRUE(farm->credentials().credentialsAreValid());
  settings.setAskBeforeClearCredentials(false);
  editor->clearCredentialsClick();
  EXPECT_EQ(stored() + shown() + editor->credentialsPreview().value_or(""), "    ");
  delegate.takeActs();
  editor->onUndoButtonClick();
  EXPECT_THAT(delegate.takeActs(), ElementsAre("save"));
  EXPECT_FALSE(editor->isUndoEnabled());
  editor->setTitle("Harbour");
  EXPECT_FALSE(editor->isUndoEnabled()) << "nor by another scan";
  EXPECT_EQ(stored(), "HAFEN jo secret");
}

TEST_F(ConnectionSettingsTest, APasswordThatTheStoreGivesLateIsNoChange) {
  for (const bool isUndone : {false, true}) {
    editNewFarm();
    save("jo", "", "");
    edit();
    farm->credentials().setPassword("late");
    isUndone ? editor->onUndoButtonClick() : editor->setChecked(Setting::kSurge, false);
    EXPECT_EQ(stored(), " jo late");
    EXPECT_FALSE(editor->isUndoEnabled());
    editor->setPassword("");
    EXPECT_EQ(stored(), " jo ") << "the user's word counts";
  }
}

TEST_F(ConnectionSettingsTest, QuestionsAreAskedWhileTheUserWantsThem) {
  const struct {
    void (Editor::*click)();
    bool (OrvaneSettings::*asks)() const;
    void (OrvaneSettings::*setAsks)(bool);
    const char *asked, *done;
  } questions[] = {{&Editor::clearCredentialsClick, &OrvaneSettings::askBeforeClearCredentials,
                    &OrvaneSettings::setAskBeforeClearCredentials, "ask to clear Harbour", "save"},
                   {&Editor::onDeleteConnectionClick, &OrvaneSettings::askBeforeDeleteConnection,
                    &OrvaneSettings::setAskBeforeDeleteConnection, "ask to delete", "finish Harbour 1"}};
  for (const auto& question : questions) {
    const auto clickWhileAsking = [&](bool asks) {
      (settings.*question.setAsks)(asks);
      edit();
      (editor.get()->*question.click)();
    };
    for (const bool isConfirmed : {false, true}) {
      clickWhileAsking(true);
      EXPECT_THAT(delegate.takeActs(), ElementsAre(question.asked));
      delegate.question(isConfirmed, false);
      EXPECT_EQ(delegate.takeActs(), isConfirmed ? Strings{question.done} : Strings{});
      EXPECT_FALSE((OrvaneSettings(home.file("settings")).*question.asks)()) << "saved, whatever the answer";
    }
    clickWhileAsking(false);
    EXPECT_THAT(delegate.takeActs(), ElementsAre(question.done));
    clickWhileAsking(true);
    editNewFarm();
    delegate.takeActs();
    delegate.question(true, true);
    EXPECT_THAT(delegate.takeActs(), IsEmpty()) << "another farm is edited by now";
  }
}

TEST_F(ConnectionSettingsTest, EachExitScansOrNotAndTellsItsState) {
  const struct {
    void (Editor::*click)();
    bool isManual;
    const char *act, *description;
  } rows[] = {{&Editor::onBackButtonClick, false, "finish Harbour 3", "typed last"},
              {&Editor::onAddManualConnectionClick, true, "finish Harbour 0", "typed last"},
              {&Editor::onCancelManualConnectionClick, true, "finish Harbour -1", ""},
              {&Editor::onDeleteConnectionClick, true, "finish Harbour -1", ""}};
  farm->addLocation(OvLocation::location());
  for (const auto& row : rows) {
    farm->setUserDescription("");
    editor->setupSettingsForFarm(farm, false, false, row.isManual);
    EXPECT_EQ(marks({editor->isAddButtonShown(), editor->isCancelButtonShown(), editor->isBackButtonShown(),
                     editor->isUndoButtonShown()}),
              row.isManual ? "++--" : "--++");
    EXPECT_TRUE(editor->isAddDescriptionButtonShown());
    editor->editConnectionDescriptionClick();
    EXPECT_EQ(editor->editDescriptionButtonTitle(), "Done");
    editor->setEditedDescription("typed last");
    if (!row.isManual) editor->editConnectionDescriptionClick();
    EXPECT_EQ(editor->userDescription() + farm->userDescription(), row.isManual ? "" : "typed last");
    (editor.get()->*row.click)();
    EXPECT_THAT(delegate.takeActs(), ElementsAre(row.act));
    EXPECT_EQ(farm->userDescription(), row.description) << row.act;
    (editor.get()->*row.click)();
    editor->setTitle("nobody's");
    editor->onUndoButtonClick();
    editor->clearCredentialsClick();
    editor->onEditLocationListClick(Editor::kAddLocation);
    editor->onConfigInfoClick();
    EXPECT_THAT(delegate.takeActs(), IsEmpty()) << "it is closed";
  }
}

TEST_F(ConnectionSettingsTest, ANewManualConnectionKeepsItsNameAndNeedsALocation) {
  editor->setupSettingsForManualFarm();
  farm = editor->editedFarm();
  EXPECT_EQ(editor->title(), "New connection");
  EXPECT_TRUE(editor->isAdvancedSectionShown());
  const std::string name = farm->name();
  editor->setTitle("Depot");
  editor->onAddManualConnectionClick();
  EXPECT_THAT(delegate.takeActs(), IsEmpty());
  editor->onEditLocationListClick(Editor::kAddLocation);
  editor->editLocation().onDoneButtonClick();
  EXPECT_THAT(delegate.takeActs(), ElementsAre("show", "hide", "save"));
  EXPECT_TRUE(editor->isAddEnabled());
  EXPECT_EQ(farm->name(), name);
}

TEST_F(ConnectionSettingsTest, LocationsAreAddedEditedAndRemoved) {
  auto& sheet = editor->editLocation();
  const auto click = [&](Editor::LocationListSegment segment, std::optional<size_t> row = {}) {
    editor->selectLocation(row);
    editor->onEditLocationListClick(segment);
  };
  const auto locations = [&] {
    std::string names;
    for (const auto& location : farm->locations()) names += location->name() + " ";
    return names + std::to_string(farm->defaultLocationIndex());
  };
  farm->addLocation(OvLocation::location());
  edit();
  EXPECT_FALSE(editor->isRemoveLocationEnabled());
  click(Editor::kRemoveLocation);
  click(Editor::kEditLocation, 1);  // which isn't there
  EXPECT_THAT(delegate.takeActs(), IsEmpty());
  click(Editor::kAddLocation);
  sheet.onCancelButtonClick();
  EXPECT_THAT(delegate.takeActs(), ElementsAre("show", "hide", "save"));
  EXPECT_EQ(locations(), "Default 0");
  EXPECT_TRUE(editor->isRemoveLocationEnabled());

  click(Editor::kAddLocation);
  sheet.setName("Two");
  sheet.setDefault(true);
  sheet.onDoneButtonClick();
  EXPECT_EQ(locations(), "Default Two 1");
  click(Editor::kEditLocation, 0);
  EXPECT_FALSE(sheet.isDefault()) << "with two, none is used without asking";
  sheet.setName("One");
  sheet.onDoneButtonClick();
  EXPECT_EQ(locations(), "One Two 1");
  click(Editor::kRemoveLocation, 1);
  EXPECT_EQ(locations(), "One -1");
  for (const bool isDefault : {true, false}) {
    click(Editor::kEditLocation, 0);
    EXPECT_TRUE(sheet.isDefault()) << "the only one";
    sheet.setDefault(isDefault);
    sheet.onDoneButtonClick();
    EXPECT_EQ(locations(), isDefault ? "One 0" : "One -1");
  }
  click(Editor::kRemoveLocation, 0);
  EXPECT_EQ(locations(), "-1");
  EXPECT_FALSE(editor->isRemoveLocationEnabled());
  click(Editor::kAddLocation);
  editNewFarm();
  sheet.onDoneButtonClick();
  EXPECT_EQ(locations(), "0") << "the sheet was another farm's";
}

TEST_F(ConnectionSettingsTest, AManagedFarmShowsWhatItsBrokerSays) {
  const struct {
    bool serverCreated, isTableShown;
    size_t locations;
    const char *timestamp, *infoTitle;
  } rows[] = {{false, true, 1, "now", "Details"},
              {true, false, 1, "now", "now"},
              {true, true, 0, "", "Details"},
              {true, true, 2, "now", "now"}};
  for (const auto& row : rows) {
    farm->setServerCreated(row.serverCreated);
    farm->setConfigTimestamp(row.timestamp);
    farm->locations().clear();
    for (size_t count = 0; count < row.locations; ++count) farm->addLocation(OvLocation::location());
    edit();
    EXPECT_EQ(editor->isLocationsTableShown(), row.isTableShown) << row.infoTitle;
    EXPECT_EQ(editor->configInfoButtonTitle(), row.infoTitle);
    editor->onEditLocationListClick(Editor::kAddLocation);
    EXPECT_EQ(delegate.takeActs().empty(), row.serverCreated);
    editor->onConfigInfoClick();
    EXPECT_TRUE(editor->isConfigInfoShown());
    EXPECT_EQ(editor->managedInfo().connectionName(), row.serverCreated ? "Harbour" : "");
    editor->onConfigInfoClick();
    EXPECT_FALSE(editor->isConfigInfoShown());
  }
}

TEST_F(ConnectionSettingsTest, ChangesOfTheFarmElsewhereReachTheEditor) {
  const struct {
    FarmChange state;
    bool ofThisFarm, isManual;
    const char* title;  // "" once it is closed
  } rows[] = {{FarmChange::kAdded, true, false, "Harbour"},    {FarmChange::kChanged, true, false, "Depot"},
              {FarmChange::kChanged, false, false, "Harbour"}, {FarmChange::kRemoved, true, false, ""},
              {FarmChange::kAllRemoved, false, false, ""},     {FarmChange::kAllRemoved, false, true, "New connection"},
              {FarmChange::kRemoved, false, false, "Harbour"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << static_cast<int>(row.state) << row.ofThisFarm << row.isManual);
    editNewFarm();
    if (row.isManual) editor->setupSettingsForManualFarm();
    farm->setName("Depot");
    manager.notifyObserversOnFarmChange(row.ofThisFarm ? farm : nullptr, row.state);
    EXPECT_TRUE(editor->editedFarm()) << "not before the main queue's next work";
    queue->pump();
    EXPECT_EQ(editor->editedFarm() ? editor->title() : "", row.title);
    EXPECT_EQ(delegate.takeActs(), editor->editedFarm() ? Strings{} : Strings{"finish Depot -1"});
    editor->onUndoButtonClick();
    EXPECT_EQ(farm->name() == "Depot", row.isManual || std::string(row.title) != "Harbour") << "where Undo goes to";
    delegate.takeActs();
  }
}

}  // namespace

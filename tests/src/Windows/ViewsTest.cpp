// What the user does in a view reaches its controller, and what the controller changes is drawn.

#include <QAccessible>
#include <QButtonGroup>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBrowser>
#include <set>

#include <gmock/gmock.h>

#include "ViewFixture.h"
#include "Windows/AboutWindow/AboutView.h"
#include "Windows/ConnectionEditor/ConnectionSettingsView.h"
#include "Windows/Desktop/AuxiliaryDialog.h"
#include "Windows/EditLocation/EditLocationView.h"
#include "Windows/SettingsWindow/SettingsView.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Tutorial/TutorialView.h"
#include "Windows/UpdateWindow/UpdateView.h"
#include "Windows/Welcome/CredentialsView.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using Editor = ConnectionSettingsViewController;
using Sheet = EditLocationWindowController;
constexpr int kWidth = orvane::metrics::kSidePanelWidth;

void press(int key) { QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key)); }

// Everything that assistive technology is told of an object and what is in it.
QString told(QAccessibleInterface& interface) {
  QString all;
  for (const auto what : {QAccessible::Name, QAccessible::Description, QAccessible::Value, QAccessible::Help})
    all += interface.text(what) + '\n';
  if (auto* texts = interface.textInterface()) all += texts->text(0, texts->characterCount()) + '\n';
  for (int i = 0; i < interface.childCount(); ++i) all += told(*interface.child(i));
  return all;
}

class ViewsTest : public testing::Test, protected ViewFixture {
 protected:
  void click(const char* button) { QTest::mouseClick(&find<QPushButton>(button), Qt::LeftButton); }
  // Types into the middle of a text, as only a field that keeps its cursor lets one.
  void type(const char* field) {
    auto& edit = find<QLineEdit>(field);
    edit.setFocus();
    edit.selectAll();
    QTest::keyClicks(&edit, "ac");
    press(Qt::Key_Left);
    QTest::keyClicks(&edit, "b");
  }

  // Each box of the view stands for one setting, a different one each, and draws it.
  template <class Setting, class Controller>
  void expectBoxesToBe(Controller& controller, size_t count) {
    std::set<size_t> turned;
    const auto boxes = view->findChildren<QCheckBox*>();
    ASSERT_EQ(boxes.size(), count);
    const auto states = [&] {
      std::vector<bool> all;
      for (size_t i = 0; i < count; ++i) all.push_back(controller.isChecked(static_cast<Setting>(i)));
      return all;
    };
    for (QCheckBox* box : boxes) {
      const std::vector<bool> before = states();
      box->click();
      const std::vector<bool> after = states();
      for (size_t i = 0; i < count; ++i) {
        if (before[i] == after[i]) continue;
        EXPECT_EQ(after[i], box->isChecked()) << box->objectName().toStdString();
        turned.insert(i);
        controller.setChecked(static_cast<Setting>(i), before[i]);
        EXPECT_EQ(before[i], box->isChecked()) << box->objectName().toStdString() << " isn't drawn";
      }
    }
    EXPECT_EQ(turned.size(), count);
  }
};

TEST_F(ViewsTest, EachBoxStandsForASettingOfItsOwn) {
  edit(std::make_shared<OvFarm>());
  show<orvane::ConnectionSettingsView>(kWidth, *editor);
  expectBoxesToBe<ConnectionSetting>(*editor, kConnectionSettings);
  preferences.setupSettingsWindow();
  show<orvane::SettingsView>(kWidth, preferences);
  expectBoxesToBe<SettingsWindowController::Box>(preferences, SettingsWindowController::kBoxCount);
}

TEST_F(ViewsTest, WhatIsTypedReachesTheController) {
  using Read = std::string (*)(ViewFixture&);
  const auto showEditor = [](ViewFixture& f) {
    f.edit(makeFarm("Harbour"));
    f.show<orvane::ConnectionSettingsView>(kWidth, *f.editor);
  };
  const auto showSheet = [](ViewFixture& f) {
    f.edit(makeFarm("Harbour"));
    f.editor->onEditLocationListClick(Editor::kAddLocation);
    f.editor->editLocation().onUseSSLClick(true);
    f.show<orvane::EditLocationView>(kWidth, f.editor->editLocation());
  };
  const struct {
    void (*show)(ViewFixture& fixture);
    const char* field;
    Read read;
  } rows[] = {
      {showEditor, "connectionNameField", [](ViewFixture& f) { return f.editor->editedFarm()->name(); }},
      {showEditor, "userNameField", [](ViewFixture& f) { return f.editor->editedFarm()->credentials().username(); }},
      {showEditor, "passwordField",
       [](ViewFixture& f) { return std::string(f.editor->editedFarm()->credentials().password().text()); }},
      {showEditor, "domainField", [](ViewFixture& f) { return f.editor->editedFarm()->credentials().domain(); }},
      {showSheet, "locationNameField", [](ViewFixture& f) { return f.editor->editLocation().name(); }},
      {showSheet, "portField", [](ViewFixture& f) { return f.editor->editLocation().port(); }},
      {showSheet, "sslGatewayField", [](ViewFixture& f) { return f.editor->editLocation().sslGateway(); }},
  };
  for (const auto& row : rows) {
    row.show(*this);
    type(row.field);
    EXPECT_EQ(row.read(*this), "abc") << row.field;
  }
}

TEST_F(ViewsTest, PopUpsOfferAndChooseWhatTheirControllerHas) {
  edit(std::make_shared<OvFarm>());
  show<orvane::ConnectionSettingsView>(kWidth, *editor);
  const std::pair<const char*, ConnectionPopUp> rows[] = {{"resolutionPopUp", ConnectionPopUp::kResolution},
                                                          {"colorsPopUp", ConnectionPopUp::kColors},
                                                          {"speedPopUp", ConnectionPopUp::kSpeed}};
  for (const auto& [name, popUp] : rows) {
    auto& shown = find<QComboBox>(name);
    const auto items = editor->items(popUp);
    ASSERT_EQ(shown.count(), static_cast<int>(items.size())) << name;
    for (size_t row = 0; row < items.size(); ++row)
      EXPECT_EQ(shown.itemText(static_cast<int>(row)).toStdString(), items[row].title);
    shown.setFocus();
    editor->handlePopUpButtonDidChangeSelection(popUp, items.size() - 1);
    EXPECT_EQ(shown.currentText().toStdString(), items.back().title) << name;
    press(Qt::Key_Up);
    EXPECT_EQ(editor->selectedItem(popUp), items.size() - 2) << name;
    QWheelEvent turn({}, {}, {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&shown, &turn);
    EXPECT_EQ(editor->selectedItem(popUp), items.size() - 2) << name << " follows the wheel";
  }
}

TEST_F(ViewsTest, ATypedPasswordIsToldToNobodyAndBelongsToItsFarm) {
  edit(makeFarm("Harbour"));
  show<orvane::ConnectionSettingsView>(kWidth, *editor);
  auto& field = find<QLineEdit>("passwordField");
  const auto typeSecret = [&] { QTest::keyClicks(&field, "first"); };
  typeSecret();
  EXPECT_THAT(told(*QAccessible::queryAccessibleInterface(view.get())).toStdString(), Not(HasSubstr("first")));
  field.selectAll();
  field.copy();
  EXPECT_THAT(QApplication::clipboard()->text().toStdString(), Not(HasSubstr("first")));
  field.deselect();
  const std::function<void()> ways[] = {[&] { click("undoButton"); }, [&] { edit(makeFarm("Depot")); },
                                        [&] {
                                          click("backButton");
                                          edit(editor->editedFarm() ? editor->editedFarm() : makeFarm("Depot"));
                                        }};
  for (const auto& leave : ways) {
    typeSecret();
    leave();
    EXPECT_EQ(field.text(), "") << "of another farm, or of before";
    EXPECT_FALSE(field.placeholderText().isEmpty()) << "that there is one is shown";
  }
  click("clearCredentialsButton");
  EXPECT_TRUE(field.placeholderText().isEmpty());
}

TEST_F(ViewsTest, TheEditorsButtonsAndKeysDoWhatTheySay) {
  const auto farm = makeFarm("Harbour");
  edit(farm);
  show<orvane::ConnectionSettingsView>(kWidth, *editor);
  click("editDescriptionButton");
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "descriptionField");
  QTest::keyClicks(QApplication::focusWidget(), "Quay: ");
  click("editDescriptionButton");
  EXPECT_EQ(find<QLabel>("descriptionText").text().left(6), "Quay: ");
  click("advancedButton");
  EXPECT_FALSE(find<QWidget>("speedPopUp").isVisible());
  click("infoButton");
  QApplication::processEvents();
  EXPECT_TRUE(find<QLabel>("infoText").isVisible());
  auto& locations = find<QListWidget>("locationList");
  locations.setCurrentRow(1);
  click("removeLocationButton");
  EXPECT_EQ(locations.count(), 1);
  locations.setCurrentRow(0);
  click("editLocationButton");
  EXPECT_EQ(editor->editLocation().name(), "Office");
  EXPECT_TRUE(delegate.isSheetShown);
  editor->editLocation().onCancelButtonClick();
  click("addLocationButton");
  editor->editLocation().setName("Workshop");
  editor->editLocation().onDoneButtonClick();
  EXPECT_EQ(locations.item(1)->text(), "Workshop");
  find<QLineEdit>("userNameField").setFocus();
  press(Qt::Key_Escape);
  edit(farm);
  click("deleteButton");
  EXPECT_EQ(farm->userDescription().substr(0, 6), "Quay: ");
  editor->setupSettingsForManualFarm();
  EXPECT_FALSE(find<QPushButton>("addButton").isEnabled());
  click("addLocationButton");
  editor->editLocation().onDoneButtonClick();
  click("addButton");
  editor->setupSettingsForManualFarm();
  press(Qt::Key_Escape);
  EXPECT_THAT(delegate.finished, ElementsAre(3, 1, 0, -1)) << "Back, Delete, Add, Cancel";
}

TEST_F(ViewsTest, AddressesAreTypedInTheList) {
  edit(makeFarm("Harbour"));
  editor->onEditLocationListClick(Editor::kAddLocation);
  Sheet& sheet = editor->editLocation();
  show<orvane::EditLocationView>(kWidth, sheet);
  auto& list = find<QListWidget>("brokerList");
  const auto typeAddress = [](const QString& text) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Delete);
    QTest::keyClicks(QApplication::focusWidget(), text);
  };
  click("addBrokerButton");
  typeAddress("one");
  press(Qt::Key_Return);
  QApplication::processEvents();
  EXPECT_THAT(sheet.brokers(), ElementsAre("one")) << "and the sheet goes on";
  click("addBrokerButton");
  typeAddress("two");
  press(Qt::Key_Escape);
  QApplication::processEvents();
  EXPECT_THAT(sheet.brokers(), ElementsAre("one", "0.0.0.0")) << "Escape ends the typing alone";
  list.setCurrentRow(0);
  list.editItem(list.item(0));
  typeAddress("");
  press(Qt::Key_Return);
  QApplication::processEvents();
  EXPECT_EQ(list.item(0)->text(), "one") << "as no address is none";
  list.setCurrentRow(1);
  click("removeBrokerButton");
  click("addBrokerButton");
  typeAddress("three");
  find<QPushButton>("doneButton").click();  // with the focus where it was
  ASSERT_EQ(editor->locations().size(), 3U);
  EXPECT_THAT(editor->locations().back()->brokers(), ElementsAre("one", "three"));
  editor->onEditLocationListClick(Editor::kAddLocation);
  list.setFocus();
  press(Qt::Key_Escape);
  EXPECT_FALSE(delegate.isSheetShown);
  EXPECT_EQ(editor->locations().size(), 3U);
}

TEST_F(ViewsTest, TheTutorialIsReadByTheKeyboard) {
  bool isOver = false;
  tutorial.setupTutorialWithFinishBlock([&] { isOver = true; });
  show<orvane::TutorialView>(kWidth, tutorial);
  std::string pages;
  for (const auto key : {Qt::Key_Right, Qt::Key_Right, Qt::Key_Left, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right}) {
    press(key);
    pages += std::to_string(tutorial.page());
    EXPECT_EQ(view->findChild<QButtonGroup*>()->checkedId(), tutorial.page());
    EXPECT_EQ(find<QLabel>("tutorialTitle").text().toStdString(), tutorial.pageTitle());
  }
  EXPECT_EQ(pages, "121233");
  EXPECT_FALSE(isOver);
  press(Qt::Key_Return);
  EXPECT_TRUE(isOver);
  isOver = false;
  tutorial.setupTutorialWithFinishBlock([&] { isOver = true; });
  press(Qt::Key_Escape);
  EXPECT_TRUE(isOver);
}

TEST_F(ViewsTest, DialogsAnswerByReturnAndEscape) {
  std::string answers;
  const auto pressInDialog = [this](int key) {
    orvane::AuxiliaryDialog dialog;
    dialog.setContent(view.get());
    dialog.show();
    QApplication::setActiveWindow(&dialog);
    view->setFocus();
    press(key);
    dialog.releaseContent();
  };
  for (const auto key : {Qt::Key_Return, Qt::Key_Escape}) {
    desktop.duringModalRun = [&](auto) {
      show<orvane::UpdateView>(kWidth, update);
      pressInDialog(key);
    };
    update.showUpdateWindowOnParent(orvane::WindowParent::kNone, "https://a.test", false, "1.2",
                                    [&](int choice) { answers += std::to_string(choice); });
    preferences.setupSettingsWindow();
    show<orvane::SettingsView>(kWidth, preferences);
    find<QCheckBox>("showTutorialBox").click();
    pressInDialog(key);
    answers += settings.showTutorialOnStart() ? "+" : "-";
  }
  EXPECT_EQ(answers, "0-2-") << "what Escape leaves is what Return stored";
}

TEST_F(ViewsTest, LinksOfTheLegalPageOpenInTheBrowserAlone) {
  show<orvane::AboutView>(kWidth, about);
  click("legalButton");
  auto& legal = find<QTextBrowser>("legalText");
  EXPECT_TRUE(legal.isVisible());
  const QString before = legal.toPlainText();
  press(Qt::Key_Tab);
  while (QApplication::focusWidget() != &legal || legal.textCursor().charFormat().anchorHref().isEmpty())
    press(Qt::Key_Tab);
  const std::string address = legal.textCursor().charFormat().anchorHref().toStdString();
  press(Qt::Key_Return);
  queue->pump();
  EXPECT_THAT(opener->takeActions(), ElementsAre("open " + address));
  EXPECT_EQ(legal.toPlainText(), before);
  click("backButton");
  EXPECT_FALSE(legal.isVisible());
}

}  // namespace

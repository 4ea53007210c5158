#pragma once

#include <QApplication>
#include <QPointer>
#include <QTest>
#include <QWidget>
#include <memory>
#include <string>
#include <vector>

#include "Controllers/AboutWindowController.h"
#include "Controllers/AlertViewController.h"
#include "Controllers/ChooseLocationViewController.h"
#include "Controllers/ConfirmWindowController.h"
#include "Controllers/ConnectOnStartConfirmationViewController.h"
#include "Controllers/ConnectionSettingsViewController.h"
#include "Controllers/InputCredentialsViewController.h"
#include "Controllers/InputUrlViewController.h"
#include "Controllers/ProductUpdateWindowController.h"
#include "Controllers/ProgressAnimationViewController.h"
#include "Controllers/SettingsWindowController.h"
#include "Controllers/TutorialViewController.h"
#include "Support/FakeDesktop.h"
#include "Support/FakeOpener.h"
#include "Support/FakeSecretStore.h"
#include "Support/FakeTimer.h"
#include "Support/HomeOfTest.h"

/// An editor's surroundings, which agree to all it asks.
struct AgreeingDelegate : ConnectionSettingsDelegate {
  using Farm = std::shared_ptr<OvFarm>;
  void connectionSettingsDidFinishEditing(const Farm&, int farmState) override { finished.push_back(farmState); }
  void connectionSettingsPromptClearingCredentialsForFarm(const Farm&, ConfirmationBlock block) override {
    block(true, true);
  }
  void connectionSettingsPromptCredentialsWithOldCredentials(const OvCredentials&, bool, CredentialsBlock) override {}
  void connectionSettingsPromptConfirmationToDeleteFarmWithBlock(ConfirmationBlock block) override {
    block(true, true);
  }
  void connectionSettingsWantsShowSheetWindow(orvane::AuxiliaryWindow) override { isSheetShown = true; }
  void connectionSettingsWantsHideSheetWindow(orvane::AuxiliaryWindow) override { isSheetShown = false; }
  void connectionSettingsWantsSaveSetttings() override {}

  std::vector<int> finished{};
  bool isSheetShown = false;
};

/// The controllers of views, and the view of one of them, shown in a window that has the focus.
struct ViewFixture {
  /// Shows a view, in place of any before, as high as it wants to be.
  template <class View, class... Controllers>
  QWidget& show(int width, Controllers&... controllers) {
    if (view) view->hide(), earlier.push_back(std::move(view));
    view = std::make_unique<View>(controllers...);
    view->resize(width, kHigh);
    view->show();
    QApplication::setActiveWindow(view.get());
    view->setFocus(Qt::OtherFocusReason);
    if (view->focusProxy() == nullptr) QTest::keyClick(view.get(), Qt::Key_Tab);
    QApplication::processEvents();
    return *view;
  }
  template <class Widget>
  Widget& find(const char* objectName) {
    Widget* found = view->findChild<Widget*>(QLatin1String(objectName));
    if (found == nullptr) throw std::logic_error(objectName);
    return *found;
  }

  /// A farm with something in all that can be set.
  static std::shared_ptr<OvFarm> makeFarm(const std::string& name) {
    auto farm = std::make_shared<OvFarm>();
    farm->setName(name);
    farm->setUserDescription("Both quays of the outer harbour, and the workshop behind the third gate");
    farm->credentials().setNeedToSave(true);
    farm->credentials().setUsername("harbourmaster");
    farm->credentials().setPassword(SecretText("old secret"));
    farm->credentials().setDomain("PORT");
    for (const char* place : {"Office", "At home"}) {
      const auto location = OvLocation::location();
      location->setName(place);
      location->setBrokers({"gate.harbour.example", "gate2.harbour.example"});
      OvLocationList locations = farm->locations();
      locations.push_back(location);
      farm->setLocations(locations);
    }
    return farm;
  }
  void edit(const std::shared_ptr<OvFarm>& farm) { editor->setupSettingsForFarm(farm, false, true, false); }

  static constexpr int kHigh = 3000;

  const HomeOfTest home{};
  const std::shared_ptr<PumpedQueue> queue = std::make_shared<PumpedQueue>();
  const std::shared_ptr<FakeOpener> opener = std::make_shared<FakeOpener>();
  FakeDesktop desktop{queue};
  OrvaneSettings settings{home.file("settings")};
  OvFarmManager manager{home.file("farms"), std::make_shared<MCCachedKeychain>(std::make_shared<FakeSecretStore>()),
                        queue, queue};
  AgreeingDelegate delegate{};
  const std::shared_ptr<ConnectionSettingsViewController> editor =
      ConnectionSettingsViewController::create(manager, delegate, settings, queue);
  SettingsWindowController preferences{settings, desktop, desktop};
  AboutWindowController about{opener, queue};
  ProductUpdateWindowController update{desktop, opener, queue};
  TutorialViewController tutorial{settings};
  InputCredentialsViewController credentials{};
  InputUrlViewController url{};
  ChooseLocationViewController location{std::make_shared<FakeTimer>(), queue};
  ConnectOnStartConfirmationViewController connectOnStart{};
  ProgressAnimationViewController progress{};
  AlertViewController alert{};
  ConfirmWindowController confirm{};
  std::vector<std::unique_ptr<QWidget>> earlier{};  // their controllers may still tell them something
  std::unique_ptr<QWidget> view{};
};

/// A view in a state that shows much, at the smallest width that it may get.
struct SurfaceOfTest {
  const char* name;
  QWidget& (*show)(ViewFixture& fixture);
};
extern const std::vector<SurfaceOfTest> kSurfaces;

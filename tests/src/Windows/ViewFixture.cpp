#include "ViewFixture.h"

#include <QAccessible>

#include <gtest/gtest.h>

#include "OrvaneCommon/LocalizedText.h"
#include "Windows/AboutWindow/AboutView.h"
#include "Windows/ConnectionEditor/ConnectionSettingsView.h"
#include "Windows/Dialogs/AlertView.h"
#include "Windows/Dialogs/ConfirmView.h"
#include "Windows/EditLocation/EditLocationView.h"
#include "Windows/SettingsWindow/SettingsView.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Theme.h"
#include "Windows/Tutorial/TutorialView.h"
#include "Windows/UpdateWindow/UpdateView.h"
#include "Windows/Welcome/ConnectOnStartView.h"
#include "Windows/Welcome/CredentialsView.h"
#include "Windows/Welcome/InputUrlView.h"
#include "Windows/Welcome/LocationView.h"
#include "Windows/Welcome/ProgressView.h"

namespace {

using Fixture = ViewFixture;

constexpr int kWindow = 420;  // the main window's smallest width
constexpr int kPanel = kWindow - orvane::metrics::kRowHeight;
constexpr int kPage = orvane::metrics::kPageWidth;
constexpr const char* kError = "The address isn't known: there is no such server as quay.harbour.example.";

template <class View, class Controller>
QWidget& showPage(Fixture& fixture, Controller& controller) {
  return fixture.show<View>(kPage, controller);
}

QWidget& showEditor(Fixture& fixture, const std::shared_ptr<OvFarm>& farm) {
  fixture.edit(farm);
  fixture.editor->onConfigInfoClick();
  return fixture.show<orvane::ConnectionSettingsView>(kPanel, *fixture.editor);
}

}  // namespace

const std::vector<SurfaceOfTest> kSurfaces = {
    {"editor", [](Fixture& f) -> QWidget& { return showEditor(f, Fixture::makeFarm("Harbour")); }},
    {"editor, managed",
     [](Fixture& f) -> QWidget& {
       const auto farm = Fixture::makeFarm("Harbour");
       farm->setServerCreated(true);
       farm->setConfigName("Harbour authority, all offices and the outer quays");
       farm->setConfigTimestamp("2026-11-23 08:15:30");
       return showEditor(f, farm);
     }},
    {"editor, new",
     [](Fixture& f) -> QWidget& {
       f.editor->setupSettingsForManualFarm();
       f.editor->editConnectionDescriptionClick();
       return f.show<orvane::ConnectionSettingsView>(kPanel, *f.editor);
     }},
    {"location",
     [](Fixture& f) -> QWidget& {
       f.edit(Fixture::makeFarm("Harbour"));
       f.editor->selectLocation(0);
       f.editor->onEditLocationListClick(ConnectionSettingsViewController::kEditLocation);
       f.editor->editLocation().selectBroker(0);
       f.editor->editLocation().onUseSSLClick(true);
       return showPage<orvane::EditLocationView>(f, f.editor->editLocation());
     }},
    {"settings",
     [](Fixture& f) -> QWidget& {
       f.preferences.setupSettingsWindow();
       return showPage<orvane::SettingsView>(f, f.preferences);
     }},
    {"about", [](Fixture& f) -> QWidget& { return showPage<orvane::AboutView>(f, f.about); }},
    {"legal",
     [](Fixture& f) -> QWidget& {
       f.about.handleLegalInfoClick();
       return showPage<orvane::AboutView>(f, f.about);
     }},
    {"update",
     [](Fixture& f) -> QWidget& {
       f.desktop.duringModalRun = [&](auto window) {
         showPage<orvane::UpdateView>(f, f.update);
         f.desktop.stopModal(window);
       };
       f.update.showUpdateWindowOnParent(orvane::WindowParent::kNone, "https://a.test", false, "08.06.01", [](int) {});
       return *f.view;
     }},
    {"tutorial",
     [](Fixture& f) -> QWidget& {
       f.tutorial.setupTutorialWithFinishBlock([] {});
       return f.show<orvane::TutorialView>(kWindow, f.tutorial);
     }},
    {"credentials",
     [](Fixture& f) -> QWidget& {
       OvCredentials credentials;
       credentials.setUsername("harbourmaster");
       f.credentials.setupWithCredentials(&credentials, false, [](auto) {});
       f.credentials.showError(kError);
       return showPage<orvane::CredentialsView>(f, f.credentials);
     }},
    {"address",
     [](Fixture& f) -> QWidget& {
       f.url.setupWithURL("quay.harbour.example", [](auto) {});
       f.url.showError(kError);
       return showPage<orvane::InputUrlView>(f, f.url);
     }},
    {"choice of a location",
     [](Fixture& f) -> QWidget& {
       f.location.setupWithFarm(
           Fixture::makeFarm("Harbour"), [](auto) {}, true);
       return showPage<orvane::LocationView>(f, f.location);
     }},
    {"connect on start",
     [](Fixture& f) -> QWidget& {
       f.connectOnStart.setupConfirmationViewWithConnectionName("Harbour", false, [](bool) {});
       return showPage<orvane::ConnectOnStartView>(f, f.connectOnStart);
     }},
    {"progress",
     [](Fixture& f) -> QWidget& {
       f.progress.startProgressWithCancelBlock([] {});
       f.progress.setDescription(kError);
       return showPage<orvane::ProgressView>(f, f.progress);
     }},
    {"alert",
     [](Fixture& f) -> QWidget& {
       f.alert.prepareAlertWithTitle(
           "Harbour", kError, {"Yes", "No"}, [](int) {}, false);
       return showPage<orvane::AlertView>(f, f.alert);
     }},
    {"confirmation",
     [](Fixture& f) -> QWidget& {
       f.confirm.setupWindowWithConfirmationText(kError, [](bool, bool) {});
       return showPage<orvane::ConfirmView>(f, f.confirm);
     }},
};

int main(int argc, char** argv) {
  orvane::preferredLocalisations();  // before a test takes the language out of the environment
  qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  orvane::applyTheme(application, orvane::ColorScheme::kLight);
  QAccessible::setActive(true);
  return RUN_ALL_TESTS();
}

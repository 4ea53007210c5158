#include "Windows/Desktop/Surfaces.h"

#include "Controllers/AppDelegate.h"
#include "Windows/AboutWindow/AboutView.h"
#include "Windows/Dialogs/AlertView.h"
#include "Windows/Dialogs/ConfirmView.h"
#include "Windows/EditLocation/EditLocationView.h"
#include "Windows/SettingsWindow/SettingsView.h"
#include "Windows/UpdateWindow/UpdateView.h"
#include "Windows/Welcome/CredentialsView.h"
#include "Windows/Welcome/LocationView.h"
#include "Windows/Welcome/ProgressView.h"

namespace orvane {

QWidget* makeSurface(AuxiliaryWindow window, AppDelegate& program) {
  MainWindowController& controller = *program.mainWindowController();
  switch (window) {
    case AuxiliaryWindow::kCredentials:
      return new CredentialsView(controller.inputCredentials());
    case AuxiliaryWindow::kLocation:
      return new LocationView(controller.chooseLocation());
    case AuxiliaryWindow::kProgress:
      return new ProgressView(controller.progress());
    case AuxiliaryWindow::kConfirmation:
      return new ConfirmView(controller.confirmWindow());
    case AuxiliaryWindow::kUpdate:
      return new UpdateView(controller.productUpdate());
    case AuxiliaryWindow::kAlert:
      return new AlertView(controller.alert());
    case AuxiliaryWindow::kLaunchFileAlert:
      return new AlertView(program.launchFileAlert());
    case AuxiliaryWindow::kEditLocation:
      return new EditLocationView(controller.connectionSettings().editLocation());
    case AuxiliaryWindow::kSettings:
      return new SettingsView(controller.settingsWindow());
    case AuxiliaryWindow::kAbout:
      return new AboutView(controller.aboutWindow());
  }
  Q_UNREACHABLE();
}

}  // namespace orvane

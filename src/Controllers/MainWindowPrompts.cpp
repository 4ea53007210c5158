// Questions to the user, alerts and notifications.

#include <utility>

#include "Controllers/MainWindowController.h"
#include "OrvaneCommon/LocalizedText.h"

void MainWindowController::brokerClientControllerShowNotificationWithTitle(const std::string& title,
                                                                           const std::string& text) {
  showUserNotificationWithTitle(title, text);
}

void MainWindowController::brokerClientControllerPromptCredentialsWithOldCredentials(
    const OvCredentials& oldCredentials, OvBrokerClientControllerDelegate::CredentialsBlock onDoneBlock,
    bool shouldDisallowSave, const OvError* authenticationError) {
  const bool hidProgress = hideProgressWindow();
  showPromptCredentialsWithCredentials(
      oldCredentials, shouldDisallowSave,
      [this, hidProgress, onDoneBlock = std::move(onDoneBlock)](std::optional<OvCredentials> credentials) {
        const bool goesOn = credentials.has_value();
        onDoneBlock(std::move(credentials));
        if (hidProgress) continueProgress(goesOn);
      },
      authenticationError);
}

void MainWindowController::brokerClientControllerPromptLocationForFarm(const std::shared_ptr<OvFarm>& farm,
                                                                       LocationBlock block) {
  const bool hidProgress = hideProgressWindow();
  showChooseLocationForFarm(farm,
                            [this, hidProgress, block = std::move(block)](const std::shared_ptr<OvLocation>& location) {
                              block(location);
                              if (hidProgress) continueProgress(location != nullptr);
                            });
}

void MainWindowController::brokerClientControllerShowUpdateWindowWithUpdateURL(const std::string& updateUrl,
                                                                               bool updateRequired,
                                                                               const std::string& avaliableVersion,
                                                                               UpdateBlock onChooseBlock) {
  const auto parent = isInDiMode() ? orvane::WindowParent::kNone : orvane::WindowParent::kMainWindow;
  _productUpdate.showUpdateWindowOnParent(parent, updateUrl, updateRequired, avaliableVersion,
                                          std::move(onChooseBlock));
}

bool MainWindowController::hideProgressWindow() {
  const bool isShown = currentAuxiliaryWindow() == Window::kProgress;
  if (isShown) hideAuxiliaryWindow(Window::kProgress);
  return isShown;
}

// A task whose question was cancelled ends by itself, maybe without a word.
void MainWindowController::continueProgress(bool goesOn) {
  if (goesOn) {
    showAuxiliaryWindow(Window::kProgress);
  } else {
    _progress.stopProgress();
  }
}

void MainWindowController::showChooseLocationForFarm(const std::shared_ptr<OvFarm>& farm, LocationBlock onChoose) {
  if (farm->locations().empty()) {
    showAlertWithMessage(orvane::localizedText("LocationTabController.EmptyLocationList"));
    return;
  }
  _chooseLocation.setupWithFarm(
      farm,
      [this, onChoose = std::move(onChoose)](const std::shared_ptr<OvLocation>& location) {
        hideAuxiliaryWindow(Window::kLocation);
        if (!location) promptWasCancelled();
        onChoose(location);
      },
      false);
  showAuxiliaryWindow(Window::kLocation);
}

void MainWindowController::showPromptCredentialsWithCredentials(
    const OvCredentials& credentials, bool disallowSave, OvBrokerClientControllerDelegate::CredentialsBlock onDoneBlock,
    const OvError* retryError) {
  _inputCredentials.setupWithCredentials(&credentials, disallowSave, credentialsWindowCallback(std::move(onDoneBlock)));
  _inputCredentials.configureButtonTitlesForManualConnect(true);
  if (retryError == nullptr) {
    _inputCredentials.hideError();
  } else {
    _inputCredentials.showError(retryError->description);
  }
  showAuxiliaryWindow(Window::kCredentials);
}

void MainWindowController::connectionSettingsPromptCredentialsWithOldCredentials(
    const OvCredentials& oldCredentials, bool disallowSave, ConnectionSettingsDelegate::CredentialsBlock onDoneBlock) {
  _inputCredentials.setupWithCredentials(&oldCredentials, disallowSave,
                                         credentialsWindowCallback(std::move(onDoneBlock)));
  showAuxiliaryWindow(Window::kCredentials);
}

OvBrokerClientControllerDelegate::CredentialsBlock MainWindowController::credentialsWindowCallback(
    OvBrokerClientControllerDelegate::CredentialsBlock onDone) {
  return [this, onDone = std::move(onDone)](std::optional<OvCredentials> credentials) {
    hideAuxiliaryWindow(Window::kCredentials);
    if (!credentials) promptWasCancelled();
    onDone(std::move(credentials));
  };
}

void MainWindowController::showConfirmation(const std::string& text, Confirmation onDone) {
  _confirmWindow.setupWindowWithConfirmationText(
      text, [this, onDone = std::move(onDone)](bool isConfirmed, bool isBoxChecked) {
        hideAuxiliaryWindow(Window::kConfirmation);
        onDone(isConfirmed, isBoxChecked);
      });
  showAuxiliaryWindow(Window::kConfirmation);
}

void MainWindowController::connectionSettingsPromptClearingCredentialsForFarm(const std::shared_ptr<OvFarm>&,
                                                                              ConfirmationBlock block) {
  showConfirmation(orvane::localizedText("ConfirmWindowController.Clear"), std::move(block));
}

void MainWindowController::connectionSettingsPromptConfirmationToDeleteFarmWithBlock(ConfirmationBlock block) {
  showConfirmation(orvane::localizedText("ConfirmWindowController.DeleteConnection"), std::move(block));
}

void MainWindowController::showAlertWithMessage(const std::string& message, const std::string& title,
                                                std::function<void(int)> onDoneBlock) {
  const auto parent = isInDiMode() ? orvane::WindowParent::kNone : orvane::WindowParent::kMainWindow;
  _alert.show(message, title, parent, std::move(onDoneBlock));
}

void MainWindowController::showAlertWithMessage(const std::string& message) {
  showAlertWithMessage(message, orvane::localizedText("ProductName.Orvane"), {});
}

void MainWindowController::showUserNotificationWithTitle(const std::string& title, const std::string& text) {
  _desktop.notifications->deliver(title.empty() ? orvane::localizedText("ProductName.Orvane") : title, text);
}

void MainWindowController::showSettingsWindow() {
  _settingsWindow.setupSettingsWindow();
  _desktop.windows->show(Window::kSettings);
}

void MainWindowController::showAboutWindow() {
  _aboutWindow.setupAboutWindow();
  _desktop.windows->show(Window::kAbout);
}

// Expanded and desktop-integration mode, and what differs between them.

#include <utility>

#include "Controllers/MainWindowController.h"

using orvane::ApplicationProcess;

void MainWindowController::switchToDiMode() {
  _settings.setDiMode(true);
  _settings.save();
  if (isInDiMode()) return;
  _diModeController =
      std::make_shared<DiModeController>(*this, *_desktop.statusArea, _desktop.timer, _desktop.mainQueue);
  _diModeController->setupDiModeWithFarms(farmManager().farms(), _currentFarm,
                                          _applicationTable.applicationsRootFolder());
  _desktop.windows->hideMainWindow();
  _desktop.process->setActivationPolicy(ApplicationProcess::ActivationPolicy::kAccessory);
  _desktop.mainQueue->post([process = _desktop.process] { process->unhide(); });
}

void MainWindowController::switchToNormalMode() {
  _settings.setDiMode(false);
  _settings.save();
  if (!isInDiMode()) return;
  _diModeController->stopProgressAnimationAndPerformCancelBlock();  // nobody could cancel it any more
  _desktop.process->setActivationPolicy(ApplicationProcess::ActivationPolicy::kRegular);
  _desktop.process->activateIgnoringOtherApps();
  _desktop.windows->bringMainWindowToFront();
  _diModeController.reset();
  if (_cover == Cover::kNone && _isToolbarVisible) setToolbarItemsEnabled(true);  // as the connection is by now
}

std::optional<orvane::AuxiliaryWindow> MainWindowController::currentAuxiliaryWindow() const {
  return isInDiMode() ? _desktop.windows->modalWindow() : _desktop.windows->attachedSheet();
}

// There is one such window at a time: a question that another takes the place of is answered by choosing nothing.
void MainWindowController::showAuxiliaryWindow(Window window) {
  const std::optional<Window> shown =
      _modalSessionForCurrentModalWindow ? _modalSessionForCurrentModalWindow : _desktop.windows->attachedSheet();
  if (shown == window) return;
  if (shown) {
    answerPromptOf(*shown);
    hideAuxiliaryWindow(*shown);
  }
  if (isInDiMode()) {
    _modalSessionForCurrentModalWindow = window;
    _desktop.windows->beginModalSession(window);
  } else {
    _desktop.windows->beginSheet(window);
    setMainMenuItemsEnabled(false);
  }
}

void MainWindowController::hideAuxiliaryWindow(Window window) {
  if (_modalSessionForCurrentModalWindow == window) {
    endModalSession(window);
  } else if (_desktop.windows->attachedSheet() == window) {
    _desktop.windows->endSheet(window);
    sheetDidEnd(window);
  }
}

void MainWindowController::sheetDidEnd(Window window) {
  _desktop.windows->hide(window);
  setMainMenuItemsEnabled(true);
}

void MainWindowController::endModalSession(Window window) {
  _modalSessionForCurrentModalWindow.reset();
  _desktop.windows->endModalSession(window);
  _desktop.windows->hide(window);
}

void MainWindowController::answerPromptOf(Window window) {
  if (window == Window::kCredentials) _inputCredentials.resetContentWithBlockPerform(true);
  if (window == Window::kLocation) _chooseLocation.resetContentWithBlockPerform(true);
  if (window == Window::kConfirmation) _confirmWindow.resetContentWithBlockPerform(true);
  if (window == Window::kEditLocation) _connectionSettings->editLocation().onCancelButtonClick();
}

void MainWindowController::startProgressAnimationWithCancelBlock(std::function<void()> onCancel) {
  if (isInDiMode()) {
    _diModeController->startProgressAnimationWithCancelBlock([this, onCancel = std::move(onCancel)] {
      if (_diModeController) _diModeController->stopProgressAnimation();
      onCancel();
    });
    return;
  }
  _progress.startProgressWithCancelBlock([this, onCancel = std::move(onCancel)] {
    hideAuxiliaryWindow(Window::kProgress);
    onCancel();
  });
  showAuxiliaryWindow(Window::kProgress);
}

void MainWindowController::stopProgressAnimation() {
  if (isInDiMode()) {
    _diModeController->stopProgressAnimation();
    return;
  }
  hideAuxiliaryWindow(Window::kProgress);
  _progress.stopProgress();
  setMainMenuItemsEnabled(true);
}

void MainWindowController::stopProgressAnimationAndPerformCancelBlock() {
  if (isInDiMode()) {
    _diModeController->stopProgressAnimationAndPerformCancelBlock();
    return;
  }
  hideAuxiliaryWindow(Window::kProgress);
  _progress.stopProgressAndPerformCancelBlock();
  setMainMenuItemsEnabled(true);
}

// What the task was asking goes with it.
void MainWindowController::diModeWantsCancelConnect() {
  stopProgressAnimationAndPerformCancelBlock();
  if (_modalSessionForCurrentModalWindow == Window::kCredentials ||
      _modalSessionForCurrentModalWindow == Window::kLocation) {
    answerPromptOf(*_modalSessionForCurrentModalWindow);
  }
}

// The status item's picture doesn't go on for a task that will end now without a word.
void MainWindowController::promptWasCancelled() {
  if (isInDiMode()) _diModeController->stopProgressAnimation();
}

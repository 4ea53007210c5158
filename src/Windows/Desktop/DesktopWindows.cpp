#include "Windows/Desktop/DesktopWindows.h"

#include <QApplication>
#include <QEventLoop>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "Platform/Linux/Desktop/WindowActivation.h"
#include "Windows/Desktop/AuxiliaryDialog.h"
#include "Windows/MainWindow/MainWindow.h"
#include "Windows/MainWindow/SheetOverlay.h"

namespace orvane {

DesktopWindows::DesktopWindows() = default;

DesktopWindows::~DesktopWindows() {
  dialogs_.clear();
  for (const auto& [window, surface] : surfaces_) {
    if (surface->parent() == nullptr) delete surface;
  }
}

void DesktopWindows::attach(MainWindow& mainWindow, SurfaceMaker makeSurface) {
  mainWindow_ = &mainWindow;
  makeSurface_ = std::move(makeSurface);
}

QWidget* DesktopWindows::surface(AuxiliaryWindow window) {
  QWidget*& made = surfaces_[window];
  if (made == nullptr) made = makeSurface_(window);
  return made;
}

AuxiliaryDialog& DesktopWindows::dialog(AuxiliaryWindow window) {
  std::unique_ptr<AuxiliaryDialog>& made = dialogs_[window];
  if (!made) made = std::make_unique<AuxiliaryDialog>();
  return *made;
}

void DesktopWindows::bringToFront(QWidget& window) { activateWindow(window, std::exchange(activationToken_, {})); }

void DesktopWindows::showMainWindow() { bringMainWindowToFront(); }

void DesktopWindows::hideMainWindow() { mainWindow_->hide(); }

void DesktopWindows::bringMainWindowToFront() {
  if (mainWindow_->isMinimized()) deminiaturizeMainWindow();
  bringToFront(*mainWindow_);
}

bool DesktopWindows::isMainWindowMiniaturized() const { return mainWindow_->isMinimized(); }

void DesktopWindows::deminiaturizeMainWindow() {
  mainWindow_->setWindowState(mainWindow_->windowState() & ~Qt::WindowMinimized);
}

void DesktopWindows::beginSheet(AuxiliaryWindow window) {
  sheet_ = window;
  mainWindow_->sheet().attach(surface(window), window == AuxiliaryWindow::kProgress);
}

void DesktopWindows::endSheet(AuxiliaryWindow window) {
  if (sheet_ == window) sheet_.reset();
}

void DesktopWindows::showDialog(AuxiliaryWindow window, bool isModal, const QWidget* parent) {
  AuxiliaryDialog& free = dialog(window);
  mainWindow_->sheet().detach(surface(window));
  free.setContent(surface(window));
  free.setWindowModality(isModal ? Qt::ApplicationModal : Qt::NonModal);
  // As its transient a modal window stays above, also above a dialog that it interrupts.
  free.winId();
  QWidget* below = QApplication::activeWindow() != nullptr ? QApplication::activeWindow() : mainWindow_;
  const bool hasOwner = isModal && below->isVisible() && below != &free;
  free.windowHandle()->setTransientParent(hasOwner ? below->windowHandle() : nullptr);
  free.placeOn(parent);
  bringToFront(free);
  if (QWidget* first = surface(window)->focusProxy()) first->setFocus(Qt::OtherFocusReason);
}

void DesktopWindows::beginModalSession(AuxiliaryWindow window) {
  modal_.push_back({window, nullptr});
  showDialog(window, true, nullptr);
}

void DesktopWindows::endModalSession(AuxiliaryWindow window) {
  modal_.remove_if([&](const Modal& modal) { return modal.loop == nullptr && modal.window == window; });
}

void DesktopWindows::runModal(AuxiliaryWindow window, WindowParent parent) {
  QEventLoop loop;
  const auto modal = modal_.insert(modal_.end(), {window, &loop});
  const bool isOnMain = parent == WindowParent::kMainWindow && mainWindow_->isVisible();
  showDialog(window, true, isOnMain ? mainWindow_ : nullptr);
  loop.exec(QEventLoop::DialogExec);
  modal_.erase(modal);
}

void DesktopWindows::stopModal(AuxiliaryWindow window) {
  const auto modal = std::ranges::find_if(modal_, [&](const Modal& candidate) {
    return candidate.loop != nullptr && !candidate.isStopped && candidate.window == window;
  });
  if (modal == modal_.end()) return;
  modal->isStopped = true;
  hide(window);
  modal->loop->exit();
}

std::optional<AuxiliaryWindow> DesktopWindows::modalWindow() const {
  const auto modal = std::find_if(modal_.rbegin(), modal_.rend(), std::not_fn(&Modal::isStopped));
  return modal == modal_.rend() ? std::nullopt : std::optional(modal->window);
}

void DesktopWindows::show(AuxiliaryWindow window) {
  showDialog(window, false, mainWindow_->isVisible() ? mainWindow_ : nullptr);
}

void DesktopWindows::hide(AuxiliaryWindow window) {
  if (surfaces_.contains(window)) mainWindow_->sheet().detach(surface(window));
  const auto shown = dialogs_.find(window);
  if (shown == dialogs_.end()) return;
  shown->second->hide();
  shown->second->releaseContent();
}

void DesktopWindows::activateIgnoringOtherApps() {
  if (mainWindow_ != nullptr && mainWindow_->isVisible()) bringToFront(*mainWindow_);
}

void DesktopWindows::terminate() {
  // Also out of a modal run, whose loop ends with the program's.
  QMetaObject::invokeMethod(QApplication::instance(), &QApplication::quit, Qt::QueuedConnection);
}

}  // namespace orvane

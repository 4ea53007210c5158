#pragma once

#include <QString>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "Platform/ApplicationProcess.h"
#include "Platform/WindowHost.h"
#include "Windows/Desktop/AuxiliaryDialog.h"

class QEventLoop;
class QWidget;

namespace orvane {

class MainWindow;

/// The program's windows on the desktop. Sheets lie inside the main window; all others are windows of their own.
class DesktopWindows : public WindowHost, public ApplicationProcess {
 public:
  /// Makes the surface that an auxiliary window shows; called once for each, when it is wanted first.
  using SurfaceMaker = std::function<QWidget*(AuxiliaryWindow)>;

  DesktopWindows();
  ~DesktopWindows() override;

  /// Before this, nothing is shown. The main window outlives the use of this object.
  void attach(MainWindow& mainWindow, SurfaceMaker makeSurface);
  /// What lets a window come to the front though another program has the focus: given by whoever asks for it, used by
  /// the next window that comes.
  void setActivationToken(std::string token) { activationToken_ = std::move(token); }

  void showMainWindow() override;
  void hideMainWindow() override;
  void bringMainWindowToFront() override;
  bool isMainWindowMiniaturized() const override;
  void deminiaturizeMainWindow() override;
  void beginSheet(AuxiliaryWindow window) override;
  void endSheet(AuxiliaryWindow window) override;
  std::optional<AuxiliaryWindow> attachedSheet() const override { return sheet_; }
  void beginModalSession(AuxiliaryWindow window) override;
  void endModalSession(AuxiliaryWindow window) override;
  void runModal(AuxiliaryWindow window, WindowParent parent) override;
  void stopModal(AuxiliaryWindow window) override;
  std::optional<AuxiliaryWindow> modalWindow() const override;
  void show(AuxiliaryWindow window) override;
  void hide(AuxiliaryWindow window) override;

  void setActivationPolicy(ActivationPolicy) override {}  // the desktop lists windows, not programs
  void unhide() override {}                               // and hides no program
  void activateIgnoringOtherApps() override;
  void terminate() override;

 private:
  struct Modal {
    AuxiliaryWindow window;
    QEventLoop* loop;  // null in a session
    bool isStopped = false;
  };

  QWidget* surface(AuxiliaryWindow window);
  AuxiliaryDialog& dialog(AuxiliaryWindow window);
  void showDialog(AuxiliaryWindow window, bool isModal, const QWidget* parent);
  void bringToFront(QWidget& window);

  MainWindow* mainWindow_ = nullptr;
  SurfaceMaker makeSurface_{};
  std::map<AuxiliaryWindow, QWidget*> surfaces_{};
  std::map<AuxiliaryWindow, std::unique_ptr<AuxiliaryDialog>> dialogs_{};
  std::optional<AuxiliaryWindow> sheet_{};
  std::list<Modal> modal_{};
  std::string activationToken_{};
};

}  // namespace orvane

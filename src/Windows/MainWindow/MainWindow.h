#pragma once

#include <QMainWindow>
#include <functional>

#include "Controllers/MainWindowController.h"

class QLabel;
class QPushButton;

namespace orvane {

class CatalogueView;
class Cover;
class MessageBar;
class SheetOverlay;
class SidePanelView;

/// The main window. The controller outlives it, or ends with nothing drawn between.
class MainWindow : public QMainWindow {
 public:
  /// @param quit ends the program.
  MainWindow(MainWindowController& controller, std::function<void()> quit);

  SheetOverlay& sheet() { return *sheet_; }
  void showMessage(const QString& title, const QString& text);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void refresh();
  void refreshWelcome();
  void refreshTutorial();
  void limitSize();
  void placeOverlays();
  QWidget* makeBar(std::function<void()> quit);

  MainWindowController& controller_;
  QPushButton* const connections_;
  QLabel* const activeConnection_;
  QPushButton* const refresh_;
  QPushButton* const logout_;
  QWidget* const bar_;
  CatalogueView* const catalogue_;
  Cover* const cover_;
  SidePanelView* const sidePanel_;
  QWidget* welcome_ = nullptr;  // made when it is wanted first, as the next
  QWidget* tutorial_ = nullptr;
  SheetOverlay* const sheet_;
  MessageBar* const messages_;
};

}  // namespace orvane

#pragma once

#include <QFrame>
#include <QPropertyAnimation>

class MainWindowController;
class QStackedLayout;

namespace orvane {

/// The panel that slides over the main window from the left: the connections, the editor of one, or the welcome flow.
/// The controller outlives it.
class SidePanelView : public QFrame {
 public:
  SidePanelView(MainWindowController& controller, QWidget* window);

  /// @param welcome  the welcome flow, if this is its place now.
  void refresh(QWidget* welcome);
  /// Puts it to its place below `top`, as wide as there is room for.
  void place(int top);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QWidget* editor();
  void slide(bool isOpen);

  MainWindowController& controller_;
  QStackedLayout* const stack_;
  QWidget* const list_;
  QWidget* editor_ = nullptr;
  QPropertyAnimation slide_;
  bool isOpen_ = false;
};

}  // namespace orvane

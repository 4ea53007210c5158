#pragma once

#include <QWidget>

class ConfirmWindowController;
class QCheckBox;
class QLabel;

namespace orvane {

/// Asks for a confirmation, and whether to ask the next time. The controller outlives it.
class ConfirmView : public QWidget {
 public:
  explicit ConfirmView(ConfirmWindowController& controller);

 private:
  void refresh();

  ConfirmWindowController& controller_;
  QLabel* const text_;
  QCheckBox* const askAgain_;
};

}  // namespace orvane

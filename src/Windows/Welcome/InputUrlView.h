#pragma once

#include <QWidget>

class InputUrlViewController;
class QLabel;
class QLineEdit;
class QPushButton;

namespace orvane {

/// The page that asks for the address of a farm. The controller outlives it.
class InputUrlView : public QWidget {
 public:
  explicit InputUrlView(InputUrlViewController& controller);

 private:
  void refresh();

  InputUrlViewController& controller_;
  QLabel* const title_;
  QLabel* const explanation_;
  QLineEdit* const address_;
  QLabel* const error_;
  QPushButton* const cancel_;
  QPushButton* const next_;
};

}  // namespace orvane

#pragma once

#include <QWidget>

class ConnectOnStartConfirmationViewController;
class QCheckBox;
class QLabel;

namespace orvane {

/// The page that asks whether a new connection is to be connected when the program starts. The controller outlives it.
class ConnectOnStartView : public QWidget {
 public:
  explicit ConnectOnStartView(ConnectOnStartConfirmationViewController& controller);

 private:
  void refresh();

  ConnectOnStartConfirmationViewController& controller_;
  QLabel* const question_;
  QCheckBox* const box_;
};

}  // namespace orvane

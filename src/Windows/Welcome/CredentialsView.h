#pragma once

#include <QWidget>

class InputCredentialsViewController;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace orvane {

/// Asks as whom to connect: a page of the welcome flow, and a window of its own. The controller outlives it.
class CredentialsView : public QWidget {
 public:
  explicit CredentialsView(InputCredentialsViewController& controller);

 private:
  void refresh();

  InputCredentialsViewController& controller_;
  QLineEdit* const userName_;
  QLineEdit* const password_;
  QLabel* const domainLabel_;
  QLineEdit* const domain_;
  QCheckBox* const save_;
  QLabel* const error_;
  QPushButton* const cancel_;
  QPushButton* const next_;
};

}  // namespace orvane

#pragma once

#include <QWidget>

class ProgressAnimationViewController;
class QLabel;
class QPushButton;

namespace orvane {

/// What is under way, with Cancel: a page of the welcome flow, and a sheet. The controller outlives it.
class ProgressView : public QWidget {
 public:
  explicit ProgressView(ProgressAnimationViewController& controller);

 private:
  void refresh();

  ProgressAnimationViewController& controller_;
  QLabel* const description_;
  QWidget* const spinner_;
  QPushButton* const cancel_;
};

}  // namespace orvane

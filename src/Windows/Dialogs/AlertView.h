#pragma once

#include <QWidget>
#include <string>
#include <vector>

class AlertViewController;
class QBoxLayout;
class QLabel;

namespace orvane {

/// A message with its buttons. The controller outlives it.
class AlertView : public QWidget {
 public:
  explicit AlertView(AlertViewController& controller);

 private:
  void refresh();
  void makeButtons();

  AlertViewController& controller_;
  std::vector<std::string> shownTitles_{};
  QLabel* const title_;
  QLabel* const text_;
  QWidget* const buttons_;
  QBoxLayout* const row_;
};

}  // namespace orvane

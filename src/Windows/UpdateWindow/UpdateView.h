#pragma once

#include <QWidget>

class ProductUpdateWindowController;
class QLabel;
class QPushButton;

namespace orvane {

/// Offers a newer version of the program, or demands it. The controller outlives it.
class UpdateView : public QWidget {
 public:
  explicit UpdateView(ProductUpdateWindowController& controller);

 private:
  void refresh();

  ProductUpdateWindowController& controller_;
  QLabel* const message_;
  QPushButton* const cancel_;
};

}  // namespace orvane

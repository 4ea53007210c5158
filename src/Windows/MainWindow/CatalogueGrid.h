#pragma once

#include <QListView>

#include "Windows/MainWindow/CatalogueModel.h"

class ApplicationTableViewController;

namespace orvane {

/// The grid of the catalogue: its keys, clicks and columns are the controller's, which outlives it.
class CatalogueGrid : public QListView {
 public:
  explicit CatalogueGrid(ApplicationTableViewController& controller);

  void refresh();
  /// What is typed here searches: called with each text that a key gives.
  void setOnTyping(std::function<void(const QString&)> onTyping) { onTyping_ = std::move(onTyping); }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyboardSearch(const QString&) override {}

 private:
  void arrangeColumns();
  void click(const QPoint& place, int clickCount);

  ApplicationTableViewController& controller_;
  CatalogueModel model_{};
  std::function<void(const QString&)> onTyping_{};
};

}  // namespace orvane

#pragma once

#include <QWidget>

class ApplicationTableViewController;
class QLabel;
class QLineEdit;
class QPushButton;

namespace orvane {

class CatalogueGrid;

/// The applications: header, search and grid. The controller outlives it.
class CatalogueView : public QWidget {
 public:
  explicit CatalogueView(ApplicationTableViewController& controller);

  /// What stands in the middle while there are no applications: without a connection, with a hint at how to get one.
  void setConnected(bool isConnected);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void refresh();
  void type(const QString& text);

  ApplicationTableViewController& controller_;
  bool isConnected_ = false;
  QLabel* const header_;
  QPushButton* const searchButton_;
  QLineEdit* const searchField_;
  QLabel* const hint_;
  CatalogueGrid* const grid_;
};

}  // namespace orvane

#pragma once

#include <QWidget>
#include <vector>

class ConnectionsListViewController;
class QPushButton;
class QVBoxLayout;

namespace orvane {

/// The connections in the side panel, with what can be done to each and to the list. The controller outlives it.
class ConnectionsListView : public QWidget {
 public:
  explicit ConnectionsListView(ConnectionsListViewController& controller);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  struct Row;

  void refresh();
  void makeRow();

  ConnectionsListViewController& controller_;
  QWidget* const list_;
  QVBoxLayout* const rows_;
  QPushButton* const add_;
  std::vector<Row> shown_;
};

}  // namespace orvane

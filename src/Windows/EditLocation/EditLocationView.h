#pragma once

#include <QWidget>

class EditLocationWindowController;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;

namespace orvane {

/// Edits one location of a connection. The controller outlives it.
class EditLocationView : public QWidget {
 public:
  explicit EditLocationView(EditLocationWindowController& controller);

 private:
  class List;

  void refresh();
  void listBrokers();
  QWidget* makeBrokers();

  EditLocationWindowController& controller_;
  QLineEdit* const name_;
  QCheckBox* const default_;
  QComboBox* const protocol_;
  QLineEdit* const port_;
  QCheckBox* const useSsl_;
  QLineEdit* const sslGateway_;
  List* const brokers_;
  QPushButton* const addBroker_;
  QPushButton* const removeBroker_;
};

}  // namespace orvane

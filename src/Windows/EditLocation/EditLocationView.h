#pragma once

#include <QWidget>
#include <string>
#include <vector>

class EditLocationWindowController;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace orvane {

/// Edits one location of a connection. The controller outlives it.
class EditLocationView : public QWidget {
 public:
  explicit EditLocationView(EditLocationWindowController& controller);

 private:
  void refresh();
  void listBrokers();
  void finishTyping();
  QWidget* makeBrokers();

  EditLocationWindowController& controller_;
  std::vector<std::string> shownBrokers_{};
  QLineEdit* const name_;
  QCheckBox* const default_;
  QComboBox* const protocol_;
  QLineEdit* const port_;
  QCheckBox* const useSsl_;
  QLineEdit* const sslGateway_;
  QListWidget* const brokers_;
  QPushButton* const addBroker_;
  QPushButton* const removeBroker_;
};

}  // namespace orvane

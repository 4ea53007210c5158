#pragma once

#include <QWidget>

class QMenu;
class QPushButton;

namespace orvane {

/// A small window that stands for the status item on a desktop without a status area: a button with the item's menu.
/// Who closes it only puts it away into the list of windows, so that the program stays within reach.
class ResidentWindow : public QWidget {
 public:
  /// The menu outlives it.
  explicit ResidentWindow(QMenu& menu);
  void setPicture(const QIcon& picture);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QPushButton* const button_;
};

}  // namespace orvane

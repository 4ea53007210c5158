#pragma once

#include <QFrame>
#include <QTimer>

class QLabel;

namespace orvane {

/// Shows messages at the foot of the main window for a while: what would be a notification on a desktop that has any.
class MessageBar : public QFrame {
 public:
  explicit MessageBar(QWidget* window);
  void showMessage(const QString& title, const QString& text);
  /// Puts it to its place in the window.
  void place();

 private:
  QLabel* const text_;
  QTimer timer_{};
};

}  // namespace orvane

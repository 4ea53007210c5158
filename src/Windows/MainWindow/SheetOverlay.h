#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>

class QFrame;
class QVBoxLayout;

namespace orvane {

/// Holds a sheet of the main window: a card in its middle, and a shade over all else, which takes no input and no focus
/// meanwhile.
class SheetOverlay : public QWidget {
 public:
  explicit SheetOverlay(QWidget* window);

  /// Shows the content, which stays the caller's, in place of any other. What is over soon doesn't flash up:
  /// `isPatient` content is seen only after a moment, though all else is shut off at once.
  void attach(QWidget* content, bool isPatient);
  /// Lets go of the content, hidden and without a parent, if it is this one, and gives the focus back.
  void detach(QWidget* content);

 protected:
  bool focusNextPrevChild(bool next) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void takeFocus();
  void keepFocus(QWidget* wanted);
  void placeCard();

  QFrame* const card_;
  QVBoxLayout* const cardLayout_;
  QPointer<QWidget> content_{};
  QPointer<QWidget> focusBehind_{};  // has the focus when the sheet is gone
  QTimer patience_{};
};

}  // namespace orvane

#pragma once

#include <QWidget>

class QButtonGroup;
class QCheckBox;
class QFrame;
class QLabel;
class QPushButton;
class TutorialViewController;

namespace orvane {

class Picture;

/// The tips that the program begins with, as a card over the main window. The controller outlives it.
class TutorialView : public QWidget {
 public:
  explicit TutorialView(TutorialViewController& controller);

 protected:
  bool focusNextPrevChild(bool next) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void refresh();
  void turnPagesBy(Qt::Key key, int step);

  TutorialViewController& controller_;
  Picture* const picture_;
  QLabel* const title_;
  QLabel* const text_;
  QButtonGroup* const pages_;
  QCheckBox* const showOnStart_;
  QPushButton* const skip_;
  QPushButton* const next_;
};

}  // namespace orvane

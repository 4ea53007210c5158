#pragma once

#include <QBasicTimer>
#include <QWidget>

namespace orvane {

/// A ring that turns while it is visible.
class Spinner : public QWidget {
 public:
  explicit Spinner(QWidget* parent = nullptr);
  QSize sizeHint() const override;

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QBasicTimer timer_{};
  int angle_ = 0;  // degrees
};

}  // namespace orvane

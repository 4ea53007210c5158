#pragma once

#include <QWidget>
#include <functional>

namespace orvane {

/// Lies over what takes no input: clear, or as a shade.
class Cover : public QWidget {
 public:
  explicit Cover(QWidget* window);
  void setGrey(bool isGrey);
  void setOnClick(std::function<void()> onClick) { onClick_ = std::move(onClick); }

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  bool isGrey_ = false;
  std::function<void()> onClick_{};
};

}  // namespace orvane

#include "Windows/MainWindow/Cover.h"

#include <QPainter>

#include "Windows/Style/Theme.h"

namespace orvane {

Cover::Cover(QWidget* window) : QWidget(window) {
  setObjectName(QStringLiteral("cover"));
  hide();
}

void Cover::setGrey(bool isGrey) {
  isGrey_ = isGrey;
  update();
}

void Cover::mousePressEvent(QMouseEvent*) {
  if (onClick_) onClick_();
}

void Cover::paintEvent(QPaintEvent*) {
  if (isGrey_) QPainter(this).fillRect(rect(), colors().shade);
}

}  // namespace orvane

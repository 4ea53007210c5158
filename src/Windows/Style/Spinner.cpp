#include "Windows/Style/Spinner.h"

#include <QPainter>

#include "Windows/Style/Theme.h"

namespace orvane {

namespace {

constexpr int kSide = 40;
constexpr int kStroke = 4;
constexpr int kFrameMilliseconds = 33;
constexpr int kDegreesPerFrame = 12;
constexpr int kArc = 100;            // degrees
constexpr int kUnitsPerDegree = 16;  // of QPainter::drawArc

}  // namespace

Spinner::Spinner(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("spinner"));
  setFixedSize(sizeHint());
}

QSize Spinner::sizeHint() const { return {kSide, kSide}; }

void Spinner::showEvent(QShowEvent*) { timer_.start(kFrameMilliseconds, this); }

void Spinner::hideEvent(QHideEvent*) { timer_.stop(); }

void Spinner::timerEvent(QTimerEvent*) {
  angle_ = (angle_ + kDegreesPerFrame) % 360;
  update();
}

void Spinner::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRect ring = rect().adjusted(kStroke, kStroke, -kStroke, -kStroke);
  painter.setPen(QPen(colors().raised, kStroke));
  painter.drawEllipse(ring);
  painter.setPen(QPen(colors().accent, kStroke, Qt::SolidLine, Qt::RoundCap));
  painter.drawArc(ring, -angle_ * kUnitsPerDegree, kArc * kUnitsPerDegree);
}

}  // namespace orvane

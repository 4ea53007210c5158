#include "Windows/Style/Picture.h"

#include <QPainter>

#include "Windows/Style/Symbols.h"

namespace orvane {

Picture::Picture(QString resource, QSize size) : resource_(std::move(resource)), size_(size) {
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
  setFixedSize(size);
}

void Picture::setResource(const QString& resource) {
  if (resource_ == resource) return;
  resource_ = resource;
  update();
}

void Picture::paintEvent(QPaintEvent*) {
  QPainter(this).drawPixmap(rect(), picture(resource_, size(), devicePixelRatioF()));
}

}  // namespace orvane

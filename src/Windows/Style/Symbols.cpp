#include "Windows/Style/Symbols.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include "Windows/Style/Theme.h"

namespace orvane {

namespace {

QByteArray resourceBytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QPixmap rendered(const QByteArray& svg, const QSize& pixels) {
  QPixmap pixmap(pixels);
  pixmap.fill(Qt::transparent);
  QSvgRenderer renderer(svg);
  if (!renderer.isValid()) return pixmap;
  renderer.setAspectRatioMode(Qt::KeepAspectRatio);
  QPainter painter(&pixmap);
  renderer.render(&painter);
  return pixmap;
}

QPixmap symbol(const QString& name, const QColor& color, const QSize& pixels) {
  const QString key = QStringLiteral("symbol/%1/%2/%3x%4")
                          .arg(name, color.name(QColor::HexArgb))
                          .arg(pixels.width())
                          .arg(pixels.height());
  QPixmap pixmap;
  if (QPixmapCache::find(key, &pixmap)) return pixmap;
  QByteArray svg = resourceBytes(QStringLiteral(":/symbols/%1.svg").arg(name));
  svg.replace("currentColor", color.name().toLatin1());
  pixmap = rendered(svg, pixels);
  QPixmapCache::insert(key, pixmap);
  return pixmap;
}

class SymbolEngine : public QIconEngine {
 public:
  SymbolEngine(QString name, bool isOnAccent) : name_(std::move(name)), isOnAccent_(isOnAccent) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const qreal ratio = painter->device() != nullptr ? painter->device()->devicePixelRatioF() : 1.0;
    QPixmap pixmap = symbol(name_, colorOf(mode), (QSizeF(rect.size()) * ratio).toSize());
    pixmap.setDevicePixelRatio(ratio);
    painter->drawPixmap(rect, pixmap);
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    return symbol(name_, colorOf(mode), size);
  }
  QIconEngine* clone() const override { return new SymbolEngine(name_, isOnAccent_); }
  QString key() const override { return QStringLiteral("orvane-symbol"); }
  bool isNull() override { return false; }

 private:
  QColor colorOf(QIcon::Mode mode) const {
    if (mode == QIcon::Disabled) return colors().disabledText;
    return isOnAccent_ ? colors().accentText : colors().text;
  }

  const QString name_;
  const bool isOnAccent_;
};

}  // namespace

QIcon symbolIcon(const QString& name) { return QIcon(new SymbolEngine(name, false)); }

QIcon accentSymbolIcon(const QString& name) { return QIcon(new SymbolEngine(name, true)); }

QIcon statusIcon(const QString& name) {
  QIcon icon;
  for (const int side : {16, 22, 24, 32, 48, 64})
    icon.addPixmap(picture(QStringLiteral(":/status/%1.svg").arg(name), QSize(side, side), 1));
  return icon;
}

QPixmap picture(const QString& resource, const QSize& size, qreal devicePixelRatio) {
  const QSize pixels = (QSizeF(size) * devicePixelRatio).toSize();
  const QString key = QStringLiteral("picture/%1/%2x%3").arg(resource).arg(pixels.width()).arg(pixels.height());
  QPixmap pixmap;
  if (!QPixmapCache::find(key, &pixmap)) {
    pixmap = rendered(resourceBytes(resource), pixels);
    QPixmapCache::insert(key, pixmap);
  }
  pixmap.setDevicePixelRatio(devicePixelRatio);
  return pixmap;
}

}  // namespace orvane

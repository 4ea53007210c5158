#include "Windows/MainWindow/CatalogueTile.h"

#include <QPainter>
#include <QPixmapCache>
#include <QTextLayout>

#include "Model/AppFolderItem.h"
#include "Support/ico2png.h"
#include "Windows/MainWindow/CatalogueModel.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Symbols.h"
#include "Windows/Style/Text.h"
#include "Windows/Style/Theme.h"

namespace orvane {

namespace {

constexpr int kNameLines = 2;
constexpr int kPadding = 8;
constexpr int kRadius = 8;

QPixmap pixmapOf(const std::shared_ptr<const IconImage>& icon, qreal devicePixelRatio) {
  // By what is in it: many applications share a picture, each with a copy of its own.
  const QString key = QStringLiteral("icon/%1x%2/%3/%4")
                          .arg(icon->width)
                          .arg(icon->height)
                          .arg(qHashBits(icon->rgba.data(), icon->rgba.size()), 0, 16)
                          .arg(devicePixelRatio);
  QPixmap pixmap;
  if (QPixmapCache::find(key, &pixmap)) return pixmap;
  const QImage image(icon->rgba.data(), static_cast<int>(icon->width), static_cast<int>(icon->height),
                     static_cast<qsizetype>(icon->width) * 4, QImage::Format_RGBA8888);
  const int side = qRound(metrics::kTileIcon * devicePixelRatio);
  // A small picture is doubled at most: enlarged further it would only blur.
  const QSize largest = QSize(side, side).boundedTo(image.size() * 2);
  pixmap = QPixmap::fromImage(image.scaled(largest, Qt::KeepAspectRatio, Qt::SmoothTransformation));
  QPixmapCache::insert(key, pixmap);
  return pixmap;
}

void drawName(QPainter& painter, const QRect& area, const QString& name) {
  QTextLayout layout(name, painter.font());
  QTextOption option(Qt::AlignHCenter);
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  layout.beginLayout();
  const int height = painter.fontMetrics().lineSpacing();
  for (int line = 0; line < kNameLines; ++line) {
    QTextLine laidOut = layout.createLine();
    if (!laidOut.isValid()) break;
    laidOut.setLineWidth(area.width());
    const QRect place(area.left(), area.top() + line * height, area.width(), height);
    const QString rest = name.mid(laidOut.textStart(), line + 1 == kNameLines ? -1 : laidOut.textLength());
    painter.drawText(place, Qt::AlignHCenter | Qt::AlignTop | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(rest.trimmed(), Qt::ElideRight, area.width()));
  }
  layout.endLayout();
}

}  // namespace

QPixmap pictureOf(const AppItem& item, qreal devicePixelRatio) {
  if (item.icon() && item.icon()->width > 0 && item.icon()->height > 0) {
    QPixmap pixmap = pixmapOf(item.icon(), devicePixelRatio);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
  }
  const auto* folder = dynamic_cast<const AppFolderItem*>(&item);
  const QString name = folder == nullptr        ? QStringLiteral("application")
                       : folder->isBackFolder() ? QStringLiteral("back")
                                                : QStringLiteral("folder");
  return picture(QStringLiteral(":/catalogue/%1.svg").arg(name), QSize(metrics::kTileIcon, metrics::kTileIcon),
                 devicePixelRatio);
}

CatalogueTile::CatalogueTile(const CatalogueModel& model, QObject* parent)
    : QStyledItemDelegate(parent), model_(model) {}

void CatalogueTile::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const AppItem* item = model_.item(index);
  if (item == nullptr) return;
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  const QRect tile = option.rect.adjusted(kPadding / 2, kPadding / 2, -kPadding / 2, -kPadding / 2);
  const bool isSelected = option.state.testFlag(QStyle::State_Selected);
  const bool isHovered = option.state.testFlag(QStyle::State_MouseOver);
  if (isSelected || isHovered) {
    const bool hasFocus = isSelected && option.state.testFlag(QStyle::State_Active) && option.widget->hasFocus();
    painter->setPen(hasFocus ? QPen(colors().accent, 1.5) : QPen(Qt::NoPen));
    painter->setBrush(isSelected ? colors().selection : colors().raised);
    painter->drawRoundedRect(tile, kRadius, kRadius);
  }
  const QPixmap pixmap = pictureOf(*item, option.widget->devicePixelRatioF());
  const QSizeF size = pixmap.deviceIndependentSize();
  const int top = tile.top() + kPadding;
  painter->drawPixmap(
      QPointF(tile.center().x() - size.width() / 2 + 0.5, top + (metrics::kTileIcon - size.height()) / 2), pixmap);
  painter->setFont(option.font);
  painter->setPen(colors().text);
  drawName(*painter, tile.adjusted(kPadding / 2, kPadding * 2 + metrics::kTileIcon, -kPadding / 2, 0),
           toQString(item->displayName()));
  painter->restore();
}

QSize CatalogueTile::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
  return {metrics::kTileWidth, kPadding * 4 + metrics::kTileIcon + option.fontMetrics.lineSpacing() * kNameLines};
}

}  // namespace orvane

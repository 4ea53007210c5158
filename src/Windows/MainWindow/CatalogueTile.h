#pragma once

#include <QStyledItemDelegate>

class AppItem;

namespace orvane {

class CatalogueModel;

/// Draws an item of the catalogue: its picture above its name, which takes two lines at most.
class CatalogueTile : public QStyledItemDelegate {
 public:
  /// The model outlives it.
  explicit CatalogueTile(const CatalogueModel& model, QObject* parent = nullptr);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  const CatalogueModel& model_;
};

/// The picture of an item, at most metrics::kTileIcon wide and high: its own, else the program's for its kind.
QPixmap pictureOf(const AppItem& item, qreal devicePixelRatio);

}  // namespace orvane

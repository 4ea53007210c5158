#pragma once

#include <QAbstractListModel>

#include "Model/AppFolderItem.h"

namespace orvane {

/// The items of the catalogue as a view of the toolkit takes them.
class CatalogueModel : public QAbstractListModel {
 public:
  /// Nothing happens if they are shown already.
  void setItems(const AppFolderItem::Items& items);

  int rowCount(const QModelIndex& parent = {}) const override;
  /// The name; for accessibility also what kind of item it is.
  QVariant data(const QModelIndex& index, int role) const override;
  /// Null for an index that is gone.
  const AppItem* item(const QModelIndex& index) const;

 private:
  AppFolderItem::Items items_{};
};

}  // namespace orvane

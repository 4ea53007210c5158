#include "Windows/MainWindow/CatalogueModel.h"

#include "Windows/Style/Text.h"

namespace orvane {

void CatalogueModel::setItems(const AppFolderItem::Items& items) {
  if (items == items_) return;
  beginResetModel();
  items_ = items;
  endResetModel();
}

int CatalogueModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(items_.size());
}

QVariant CatalogueModel::data(const QModelIndex& index, int role) const {
  const AppItem* shown = item(index);
  if (shown == nullptr) return {};
  if (role == Qt::DisplayRole || role == Qt::ToolTipRole) return toQString(shown->displayName());
  if (role == Qt::AccessibleDescriptionRole)
    return shown->isFolder() ? text("View.Catalogue.Folder") : text("View.Catalogue.Application");
  return {};
}

const AppItem* CatalogueModel::item(const QModelIndex& index) const {
  const auto row = static_cast<size_t>(index.row());
  return index.isValid() && row < items_.size() ? items_[row].get() : nullptr;
}

}  // namespace orvane

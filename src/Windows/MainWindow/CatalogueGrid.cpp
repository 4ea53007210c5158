#include "Windows/MainWindow/CatalogueGrid.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>

#include "Controllers/ApplicationTableViewController.h"
#include "Windows/MainWindow/CatalogueTile.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Text.h"

namespace orvane {

namespace {

using Code = ApplicationTableCollectionView::KeyCode;

constexpr struct {
  int key;
  Code code;
} kKeys[] = {
    {Qt::Key_Return, Code::kReturn}, {Qt::Key_Enter, Code::kReturn}, {Qt::Key_Backspace, Code::kDelete},
    {Qt::Key_Delete, Code::kDelete}, {Qt::Key_Left, Code::kLeft},    {Qt::Key_Right, Code::kRight},
    {Qt::Key_Down, Code::kDown},     {Qt::Key_Up, Code::kUp},
};

}  // namespace

CatalogueGrid::CatalogueGrid(ApplicationTableViewController& controller) : controller_(controller) {
  setObjectName(QStringLiteral("catalogueGrid"));
  setAccessibleName(text("ApplicationTable.ApplicationsLabel"));
  setProperty("role", "grid");
  setModel(&model_);
  setItemDelegate(new CatalogueTile(model_, this));
  setViewMode(QListView::IconMode);
  setMovement(QListView::Static);
  setResizeMode(QListView::Adjust);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setDragEnabled(false);
  setUniformItemSizes(true);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setMouseTracking(true);
  setFrameShape(QFrame::NoFrame);
}

void CatalogueGrid::refresh() {
  model_.setItems(controller_.appItems());
  arrangeColumns();
  const std::optional<size_t> selected = controller_.selectionIndex();
  const QModelIndex index = selected ? model_.index(static_cast<int>(*selected), 0) : QModelIndex();
  if (index == currentIndex() && selectionModel()->isSelected(index) == index.isValid()) return;
  setCurrentIndex(index);
  if (index.isValid()) scrollTo(index);
}

void CatalogueGrid::arrangeColumns() {
  const int width = viewport()->width();
  controller_.grid().setWidths(width, metrics::kTileWidth);
  // Wide columns share what is left, unless a row isn't full.
  const int columns = std::max(1, width / metrics::kTileWidth);
  const QSize cell(width / columns, itemDelegate()->sizeHint(QStyleOptionViewItem(), {}).height());
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  const QSize grid(cell.width(), itemDelegate()->sizeHint(option, {}).height());
  if (gridSize() != grid) setGridSize(grid);
}

void CatalogueGrid::keyPressEvent(QKeyEvent* event) {
  const auto* key = std::ranges::find(kKeys, event->key(), [](const auto& row) { return row.key; });
  const auto modifiers = event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
  if (modifiers == Qt::NoModifier && key != std::end(kKeys)) {
    controller_.grid().keyDown(key->code);
    return;
  }
  const QString typed = event->text();
  if (modifiers == Qt::NoModifier && !typed.isEmpty() && typed.front().isPrint() && !typed.front().isSpace()) {
    if (onTyping_) onTyping_(typed);
    return;
  }
  // Keys that the toolkit knows besides, such as Page Down and Home.
  QListView::keyPressEvent(event);
  const QModelIndex reached = currentIndex();
  if (reached.isValid() && static_cast<size_t>(reached.row()) != controller_.selectionIndex())
    controller_.handleAppTableItemViewClick(static_cast<size_t>(reached.row()), 1);
  refresh();
}

void CatalogueGrid::mouseReleaseEvent(QMouseEvent* event) {
  QListView::mouseReleaseEvent(event);
  if (event->button() == Qt::LeftButton) click(event->pos(), 1);
  refresh();
}

void CatalogueGrid::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) click(event->pos(), 2);
}

void CatalogueGrid::click(const QPoint& place, int clickCount) {
  const QModelIndex index = indexAt(place);
  if (index.isValid()) controller_.handleAppTableItemViewClick(static_cast<size_t>(index.row()), clickCount);
}

void CatalogueGrid::resizeEvent(QResizeEvent* event) {
  QListView::resizeEvent(event);
  arrangeColumns();
}

void CatalogueGrid::changeEvent(QEvent* event) {
  QListView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) arrangeColumns();
}

}  // namespace orvane

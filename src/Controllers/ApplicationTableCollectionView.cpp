#include "Controllers/ApplicationTableCollectionView.h"

#include <algorithm>

void ApplicationTableCollectionView::setWidths(double gridWidth, double itemWidth) {
  _gridWidth = gridWidth;
  _itemWidth = itemWidth;
}

// A grid too narrow for an item, or not laid out yet, shows one column: "up" and "down" go one item further there.
size_t ApplicationTableCollectionView::numberOfColumns() const {
  const double fitting = _itemWidth > 0 ? std::clamp(_gridWidth / _itemWidth, 1.0, 1e6) : 1.0;
  return std::min(static_cast<size_t>(fitting), _itemCount);
}

bool ApplicationTableCollectionView::keyDown(int keyCode) {
  switch (keyCode) {
    case kReturn:
      _delegate.openSelectedApplication();
      return true;
    case kDelete:
      _delegate.backToParentFolder();
      return true;
    case kLeft:
      _delegate.moveSelection(SelectionDirection::kLeft);
      return true;
    case kRight:
      _delegate.moveSelection(SelectionDirection::kRight);
      return true;
    case kDown:
      _delegate.moveSelection(SelectionDirection::kDown);
      return true;
    case kUp:
      _delegate.moveSelection(SelectionDirection::kUp);
      return true;
    default:
      return false;
  }
}

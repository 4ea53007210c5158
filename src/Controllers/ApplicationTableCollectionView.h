#pragma once

#include <cstddef>
#include <cstdint>

/// Which way a selection moves.
enum class SelectionDirection : int { kLeft = 0, kRight = 1, kUp = 2, kDown = 3 };

/// Does what the keys of the grid ask for.
class ApplicationTableCollectionViewDelegate {
 public:
  virtual ~ApplicationTableCollectionViewDelegate() = default;
  virtual void moveSelection(SelectionDirection direction) = 0;
  virtual void backToParentFolder() = 0;
  virtual void openSelectedApplication() = 0;
};

/// The grid that the applications stand in: its measures and its keys. Main thread only.
class ApplicationTableCollectionView {
 public:
  /// Virtual key codes of the keys that mean something here; a view maps its toolkit's.
  enum KeyCode : int { kReturn = 36, kDelete = 51, kLeft = 123, kRight = 124, kDown = 125, kUp = 126 };

  /// The delegate is not owned.
  explicit ApplicationTableCollectionView(ApplicationTableCollectionViewDelegate& delegate) : _delegate(delegate) {}

  /// The grid's and one item's width, in the same unit.
  void setWidths(double gridWidth, double itemWidth);
  void setItemCount(size_t count) { _itemCount = count; }
  /// How many items stand in a row: what there is room for, at least one, and never more than are shown.
  size_t numberOfColumns() const;

  /// @return false for a key that means nothing here.
  bool keyDown(int keyCode);

 private:
  ApplicationTableCollectionViewDelegate& _delegate;
  double _gridWidth = 0;
  double _itemWidth = 0;
  size_t _itemCount = 0;
};

#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Controllers/ApplicationTableCollectionView.h"
#include "Controllers/ApplicationTableDelegate.h"
#include "Controllers/Surface.h"
#include "Model/AppFolderItem.h"

enum class ApplicationTableFocus { kGrid, kSearchField };

/// Navigation, search and selection over the tree of published applications. Main thread only.
class ApplicationTableViewController : public orvane::FocusableSurface<ApplicationTableFocus>,
                                       public ApplicationTableCollectionViewDelegate {
 public:
  /// The delegate is not owned.
  explicit ApplicationTableViewController(ApplicationTableDelegate& delegate);

  /// Shows a tree, which becomes the table's own and gets its ways back, or nothing.
  ///
  /// A root with a single folder is skipped: its child stands for it, so that nobody sees a list of one folder.
  void showApplications(const std::shared_ptr<AppFolderItem>& rootFolder);
  /// The tree; null if there is none.
  const std::shared_ptr<AppFolderItem>& applicationsRootFolder() const { return _rootFolder; }

  // What is shown.
  const AppFolderItem::Items& appItems() const { return _appItems; }
  /// Nothing in an empty table.
  std::optional<size_t> selectionIndex() const { return _selectionIndex; }
  /// Null without a selection.
  std::shared_ptr<AppItem> selectedItem() const;
  const std::string& headerText() const { return _headerText; }
  const std::string& emptyResultText() const { return _emptyResultText; }
  bool isEmptyResultLabelHidden() const { return _isEmptyResultLabelHidden; }
  bool isShowSearchButtonEnabled() const;
  bool isSearchFieldShown() const { return _isSearchFieldShown; }
  /// Whether the field slides into the place that it has now.
  bool isSearchFieldAnimated() const { return _isSearchFieldAnimated; }
  const std::string& searchText() const { return _searchText; }
  ApplicationTableCollectionView& grid() { return _grid; }

  // What the user does.
  void moveSelection(SelectionDirection direction) override;
  void backToParentFolder() override;
  void openSelectedApplication() override;
  /// A click on an item, the how manyth in a row: the first selects, the second opens.
  void handleAppTableItemViewClick(size_t index, int clickCount);
  void showSearchField(bool isShown, bool isAnimated);
  void onShowSearchButtonClick() { showSearchField(true, true); }
  /// The field's text, after each keystroke.
  void controlTextDidChange(const std::string& text);
  void onCancelSearchClick() { hideSearchField(); }

  /// Ends a search.
  void hideSearchField() { resetSearch(); }
  /// Gives the focus to the grid, or to the search field while that is open.
  void makeFirstResponder();

 private:
  static void appendBackFoldersForRootItem(const AppFolderItem& rootFolder);
  static void addBackItemToFolder(AppFolderItem& folder);

  void showFolderContent(const std::shared_ptr<AppFolderItem>& folder);
  void updateAppTableWithApplications(AppFolderItem::Items items);
  void performAppItemClick(const std::shared_ptr<AppItem>& item);
  void handleAppItemClick(const std::shared_ptr<AppItem>& item, int clickCount);
  void setSearchPattern(const std::string& pattern);
  void updateSearchLabelsWithPattern(const std::string& pattern, bool searchSuccessful, bool searchMode);
  void setSearchFieldShown(bool isShown, bool isAnimated);
  void resetSearch();
  void hideSearchFieldIfEmpty();

  ApplicationTableDelegate& _delegate;
  ApplicationTableCollectionView _grid{*this};
  AppFolderItem::Items _appItems{};
  std::shared_ptr<AppFolderItem> _rootFolder{};
  std::weak_ptr<AppFolderItem> _currentFolder{};  // in the tree, which the root owns
  bool _singleFolderMode = false;
  std::optional<size_t> _selectionIndex{};
  std::string _headerText{};
  std::string _emptyResultText{};
  bool _isEmptyResultLabelHidden = true;
  bool _isSearchFieldShown = false;
  bool _isSearchFieldAnimated = false;
  std::string _searchText{};
};

#include "Controllers/ApplicationTableViewController.h"

#include <utility>
#include <vector>

#include "OrvaneCommon/LocalizedText.h"
#include "OrvaneCommon/TextFormat.h"

namespace {

std::shared_ptr<AppFolderItem> asFolder(const std::shared_ptr<AppItem>& item) {
  return item && item->isFolder() ? std::static_pointer_cast<AppFolderItem>(item) : nullptr;
}

bool beginsWithBackItem(const AppFolderItem& folder) {
  const auto first = folder.appItems().empty() ? nullptr : asFolder(folder.appItems().front());
  return first && first->isBackFolder();
}

}  // namespace

ApplicationTableViewController::ApplicationTableViewController(ApplicationTableDelegate& delegate)
    : _delegate(delegate) {
  updateSearchLabelsWithPattern({}, true, false);
}

void ApplicationTableViewController::showApplications(const std::shared_ptr<AppFolderItem>& rootFolder) {
  _rootFolder = rootFolder;
  _singleFolderMode = rootFolder && rootFolder->appItems().size() == 1 && rootFolder->appItems().front()->isFolder();
  if (_singleFolderMode) {
    showFolderContent(asFolder(rootFolder->appItems().front()));
  } else {
    if (rootFolder) appendBackFoldersForRootItem(*rootFolder);
    showFolderContent(rootFolder);
  }
  changed();
  focus(ApplicationTableFocus::kGrid);
}

// By a list of what is still to be done, as folders may be nested deeper than calls.
void ApplicationTableViewController::appendBackFoldersForRootItem(const AppFolderItem& rootFolder) {
  std::vector<const AppFolderItem*> waiting = {&rootFolder};
  while (!waiting.empty()) {
    const AppFolderItem& folder = *waiting.back();
    waiting.pop_back();
    for (const auto& item : folder.appItems()) {
      const auto child = asFolder(item);
      if (!child || child->isBackFolder()) continue;
      if (!beginsWithBackItem(*child)) addBackItemToFolder(*child);  // a tree may be shown more than once
      waiting.push_back(child.get());
    }
  }
}

void ApplicationTableViewController::addBackItemToFolder(AppFolderItem& folder) {
  auto back = AppFolderItem::appBackFolder();
  back->setDisplayName(orvane::localizedText("ApplicationTable.DefaultFolderNames.Back"));
  folder.insertItem(std::move(back), 0);  // its icon is the window's own, as with other folders
}

void ApplicationTableViewController::showFolderContent(const std::shared_ptr<AppFolderItem>& folder) {
  std::shared_ptr<AppFolderItem> target = folder;
  if (folder && folder->isBackFolder()) {
    const auto holder = folder->parentFolder();
    target = holder ? holder->parentFolder() : nullptr;
    if (!target) return;  // its tree has gone
  }
  _currentFolder = target;
  _searchText.clear();
  setSearchPattern({});
  setSearchFieldShown(false, _isSearchFieldShown);
}

void ApplicationTableViewController::updateAppTableWithApplications(AppFolderItem::Items items) {
  _appItems = std::move(items);
  _grid.setItemCount(_appItems.size());
  _selectionIndex = _appItems.empty() ? std::nullopt : std::optional<size_t>(0);
}

std::shared_ptr<AppItem> ApplicationTableViewController::selectedItem() const {
  return _selectionIndex ? _appItems[*_selectionIndex] : nullptr;
}

void ApplicationTableViewController::backToParentFolder() {
  const auto current = _currentFolder.lock();
  if (!current || current == _rootFolder) return;
  if (_singleFolderMode && current == _rootFolder->appItems().front()) return;
  showFolderContent(current->parentFolder());
  changed();
}

void ApplicationTableViewController::moveSelection(SelectionDirection direction) {
  if (!_selectionIndex) return;
  const auto columns = static_cast<ptrdiff_t>(_grid.numberOfColumns());
  const ptrdiff_t steps[] = {-1, 1, -columns, columns};
  const ptrdiff_t index = static_cast<ptrdiff_t>(*_selectionIndex) + steps[static_cast<int>(direction)];
  if (index < 0 || index >= static_cast<ptrdiff_t>(_appItems.size())) return;
  _selectionIndex = static_cast<size_t>(index);
  changed();
}

void ApplicationTableViewController::openSelectedApplication() {
  if (const auto item = selectedItem()) performAppItemClick(item);
}

void ApplicationTableViewController::performAppItemClick(const std::shared_ptr<AppItem>& item) {
  if (const auto folder = asFolder(item)) {
    showFolderContent(folder);
    changed();
  } else {
    _delegate.applicationHasBeenChoosen(item);
  }
}

void ApplicationTableViewController::handleAppTableItemViewClick(size_t index, int clickCount) {
  if (index >= _appItems.size()) return;
  const auto item = _appItems[index];
  if (_selectionIndex != index) {
    _selectionIndex = index;
    changed();
  }
  focus(ApplicationTableFocus::kGrid);
  handleAppItemClick(item, clickCount);
}

void ApplicationTableViewController::handleAppItemClick(const std::shared_ptr<AppItem>& item, int clickCount) {
  hideSearchFieldIfEmpty();
  if (clickCount >= 2) performAppItemClick(item);
}

bool ApplicationTableViewController::isShowSearchButtonEnabled() const {
  const auto current = _currentFolder.lock();
  return !_isSearchFieldShown && current && !current->appItems().empty();
}

void ApplicationTableViewController::showSearchField(bool isShown, bool isAnimated) {
  const auto current = _currentFolder.lock();
  if (isShown && (!current || current->appItems().empty())) return;
  setSearchFieldShown(isShown, isAnimated);
  changed();
  if (isShown) focus(ApplicationTableFocus::kSearchField);
}

void ApplicationTableViewController::setSearchFieldShown(bool isShown, bool isAnimated) {
  _isSearchFieldShown = isShown;
  _isSearchFieldAnimated = isAnimated;
}

void ApplicationTableViewController::controlTextDidChange(const std::string& text) {
  _searchText = text;
  setSearchPattern(text);
  changed();
}

void ApplicationTableViewController::setSearchPattern(const std::string& pattern) {
  const auto current = _currentFolder.lock();
  if (!current) {
    updateAppTableWithApplications({});
  } else if (pattern.empty()) {
    updateAppTableWithApplications(current->appItems());
  } else {
    updateAppTableWithApplications(current->applicationItemsUsingFilterPattern(pattern));
  }
  updateSearchLabelsWithPattern(pattern, pattern.empty() || !_appItems.empty(), !pattern.empty());
}

void ApplicationTableViewController::updateSearchLabelsWithPattern(const std::string& pattern, bool searchSuccessful,
                                                                   bool searchMode) {
  _headerText = searchMode ? orvane::localizedText("ApplicationSearch.SearchResults.Header")
                           : orvane::localizedText("ApplicationTable.ApplicationsLabel");
  _isEmptyResultLabelHidden = searchSuccessful;
  if (!searchSuccessful) {
    _emptyResultText =
        orvane::formatText(orvane::localizedText("ApplicationSearch.SearchResults.NoApplicationsFound"), {pattern});
  }
}

void ApplicationTableViewController::resetSearch() {
  if (!_searchText.empty()) {
    _searchText.clear();
    setSearchPattern({});
  }
  showSearchField(false, _isSearchFieldShown);
}

void ApplicationTableViewController::hideSearchFieldIfEmpty() {
  if (_isSearchFieldShown && _searchText.empty()) showSearchField(false, true);
}

void ApplicationTableViewController::makeFirstResponder() {
  focus(isShowSearchButtonEnabled() ? ApplicationTableFocus::kGrid : ApplicationTableFocus::kSearchField);
}

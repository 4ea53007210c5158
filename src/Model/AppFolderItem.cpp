#include "Model/AppFolderItem.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <unordered_set>
#include <utility>

#include "Model/WildcardPattern.h"

// All that goes down a tree goes by a list of what is still to be done: calls would overflow the stack.

namespace {

// Visits `top` and all folders below it, each before those that it holds, which follow in its order. A visit may sort
// the folder.
template <typename Folder, typename Visit>
void forEachFolder(Folder& top, const Visit& visit) {
  std::vector<Folder*> waiting = {&top};
  while (!waiting.empty()) {
    Folder& folder = *waiting.back();
    waiting.pop_back();
    visit(folder);
    const AppFolderItem::Items& items = folder.appItems();
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
      if ((*item)->isFolder()) waiting.push_back(static_cast<Folder*>(item->get()));
    }
  }
}

bool isWayUp(const AppItem& item) { return item.isFolder() && static_cast<const AppFolderItem&>(item).isBackFolder(); }

}  // namespace

std::shared_ptr<AppFolderItem> AppFolderItem::appFolder() {
  return std::shared_ptr<AppFolderItem>(new AppFolderItem(false));
}

std::shared_ptr<AppFolderItem> AppFolderItem::appBackFolder() {
  return std::shared_ptr<AppFolderItem>(new AppFolderItem(true));
}

AppFolderItem::~AppFolderItem() {
  Items letGo = std::move(_appItems);
  while (!letGo.empty()) {
    const std::shared_ptr<AppItem> item = std::move(letGo.back());
    letGo.pop_back();
    if (!item->isFolder() || item.use_count() > 1) continue;
    Items& inner = static_cast<AppFolderItem&>(*item)._appItems;
    letGo.insert(letGo.end(), std::move_iterator(inner.begin()), std::move_iterator(inner.end()));
    inner.clear();
  }
}

std::shared_ptr<AppFolderItem> AppFolderItem::copy() const {
  const std::shared_ptr<AppFolderItem> top(new AppFolderItem(*this));
  std::vector<std::pair<const AppFolderItem*, AppFolderItem*>> waiting = {{this, top.get()}};
  while (!waiting.empty()) {
    const auto [source, target] = waiting.back();
    waiting.pop_back();
    target->_appItems.reserve(source->_appItems.size());
    for (const std::shared_ptr<AppItem>& item : source->_appItems) {
      if (!item->isFolder()) {
        target->addItem(item->copy());
        continue;
      }
      const auto* folder = static_cast<const AppFolderItem*>(item.get());
      const std::shared_ptr<AppFolderItem> folderCopy(new AppFolderItem(*folder));
      target->addItem(folderCopy);
      waiting.emplace_back(folder, folderCopy.get());
    }
  }
  return top;
}

void AppFolderItem::addItem(std::shared_ptr<AppItem> item) { insertItem(std::move(item), _appItems.size()); }

void AppFolderItem::insertItem(std::shared_ptr<AppItem> item, size_t index) {
  item->_parentFolder = weak_from_this();
  const auto place = static_cast<ptrdiff_t>(std::min(index, _appItems.size()));
  _appItems.insert(_appItems.begin() + place, std::move(item));
}

void AppFolderItem::addItems(Items items) {
  for (std::shared_ptr<AppItem>& item : items) addItem(std::move(item));
}

void AppFolderItem::removeItem(const std::shared_ptr<AppItem>& item) { removeItems({item}); }

void AppFolderItem::removeItems(const Items& items) {
  std::unordered_set<const AppItem*> wanted;
  for (const std::shared_ptr<AppItem>& item : items) wanted.insert(item.get());
  // `items` may be this folder's own list, so that stays as it is until the last step.
  Items kept;
  for (const std::shared_ptr<AppItem>& item : _appItems) {
    if (wanted.contains(item.get())) {
      item->_parentFolder.reset();
    } else {
      kept.push_back(item);
    }
  }
  _appItems = std::move(kept);
}

bool AppFolderItem::containItem(const std::shared_ptr<AppItem>& item) const {
  return std::ranges::find(_appItems, item) != _appItems.end();
}

void AppFolderItem::sortContentAlphabetically() {
  forEachFolder(*this, [](AppFolderItem& folder) {
    std::ranges::stable_sort(folder._appItems, {}, [](const std::shared_ptr<AppItem>& item) -> const std::string& {
      return item->foldedDisplayName();
    });
  });
}

void AppFolderItem::sortAppItemsUsingComparator(const Comparator& isBefore) {
  std::ranges::stable_sort(_appItems, [&](const auto& first, const auto& second) { return isBefore(*first, *second); });
}

AppFolderItem::Items AppFolderItem::allApplicationItems() const {
  Items all;
  forEachFolder(*this, [&](const AppFolderItem& folder) {
    all.insert(all.end(), folder._appItems.begin(), folder._appItems.end());
  });
  return all;
}

AppFolderItem::Items AppFolderItem::applicationItemsUsingFilterPattern(std::string_view pattern) const {
  if (pattern.empty()) return allApplicationItems();
  const orvane::WildcardPattern wanted(std::string("*").append(pattern).append("*"));
  Items found;
  forEachFolder(*this, [&](const AppFolderItem& folder) {
    std::ranges::copy_if(folder._appItems, std::back_inserter(found), [&](const std::shared_ptr<AppItem>& item) {
      return wanted.matchesFolded(item->foldedDisplayName()) && !isWayUp(*item);
    });
  });
  return found;
}

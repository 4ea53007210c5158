#pragma once

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "Model/AppItem.h"

/// A folder of applications and further folders, which it owns; or, as a back folder, the way up that the table of
/// applications puts before a folder's content.
///
/// Folders may be nested as deep as memory allows. A folder must not come to hold itself, be it through others.
class AppFolderItem final : public AppItem, public std::enable_shared_from_this<AppFolderItem> {
 public:
  using Items = std::vector<std::shared_ptr<AppItem>>;
  /// Whether the first item stands before the second: a strict weak order. Must not throw.
  using Comparator = std::function<bool(const AppItem&, const AppItem&)>;

  /// An empty folder.
  static std::shared_ptr<AppFolderItem> appFolder();
  /// An empty folder that is a way up.
  static std::shared_ptr<AppFolderItem> appBackFolder();
  ~AppFolderItem() override;

  bool isFolder() const override { return true; }
  bool isBackFolder() const { return _isBackFolder; }

  /// What AppItem::copy() returns, typed.
  std::shared_ptr<AppFolderItem> copy() const;

  const Items& appItems() const { return _appItems; }

  /// Take the item, which must not be null, and become its parent; a folder that it was in keeps it. An index behind
  /// the end is the end.
  void addItem(std::shared_ptr<AppItem> item);
  void insertItem(std::shared_ptr<AppItem> item, size_t index);
  void addItems(Items items);

  /// Let go of the item wherever it stands here, and clear its parent; nothing happens to an item that isn't here.
  void removeItem(const std::shared_ptr<AppItem>& item);
  void removeItems(const Items& items);

  /// Whether the folder itself holds the item, not one below.
  bool containItem(const std::shared_ptr<AppItem>& item) const;

  /// Sorts this folder and all below by display name regardless of letter case, in the order of the code points. Items
  /// of equal names keep their order.
  void sortContentAlphabetically();
  /// Sorts this folder alone. Equal items keep their order.
  void sortAppItemsUsingComparator(const Comparator& isBefore);

  /// This folder's items in their order, then for each folder among them, in order, all of that folder's. Folders and
  /// back folders are among them.
  Items allApplicationItems() const;

  /// Those of allApplicationItems() whose display name has the pattern in it somewhere, regardless of letter case;
  /// never a back folder. An empty pattern gives allApplicationItems() as it is.
  ///
  /// `*` in the pattern stands for any characters or none, `?` for one character, and `\` takes its meaning from the
  /// character behind it. As the pattern is searched between two stars, a `\` at its end takes the second one's: it
  /// finds the names that end with the pattern and a star.
  Items applicationItemsUsingFilterPattern(std::string_view pattern) const;

 private:
  explicit AppFolderItem(bool isBackFolder) : _isBackFolder(isBackFolder) {}
  AppFolderItem(const AppFolderItem& other)
      : AppItem(other), enable_shared_from_this(), _isBackFolder(other._isBackFolder) {}

  std::shared_ptr<AppItem> copyItem() const override { return copy(); }

  Items _appItems{};
  bool _isBackFolder;
};

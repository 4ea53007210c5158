#pragma once

#include <memory>
#include <string>
#include <utility>

#include "Support/ico2png.h"

class AppFolderItem;

/// One published application as the program shows it; base of the folders that hold them. Texts are UTF-8.
///
/// Items have an identity and are held by std::shared_ptr. A tree of them has no lock: it belongs to one thread at a
/// time, the one that builds it, then the main thread.
class AppItem {
 public:
  AppItem() = default;
  virtual ~AppItem() = default;
  AppItem& operator=(const AppItem&) = delete;

  virtual bool isFolder() const { return false; }

  /// A new item of the same name, display name and icon, with the same parent folder, which doesn't hold it, though. A
  /// folder's copy holds copies of all that the folder holds.
  std::shared_ptr<AppItem> copy() const { return copyItem(); }

  /// What the broker knows the application by.
  const std::string& name() const { return _name; }
  void setName(std::string name) { _name = std::move(name); }

  /// What the user sees, and what sorting, search and automatic launches go by.
  const std::string& displayName() const { return _displayName; }
  void setDisplayName(std::string displayName);
  /// The display name without letter case, as orvane::foldCase() gives it; kept, so that asking costs nothing.
  const std::string& foldedDisplayName() const { return _foldedDisplayName; }

  /// The picture, shared with whoever shows it; null if there is none: the window then draws its own default, one for
  /// applications and one for folders.
  const std::shared_ptr<const IconImage>& icon() const { return _icon; }
  void setIcon(std::shared_ptr<const IconImage> icon) { _icon = std::move(icon); }

  /// The folder that took the item last; null for a root, and when that folder is gone.
  std::shared_ptr<AppFolderItem> parentFolder() const { return _parentFolder.lock(); }

 protected:
  AppItem(const AppItem&) = default;

 private:
  friend class AppFolderItem;

  virtual std::shared_ptr<AppItem> copyItem() const;

  std::string _foldedDisplayName{};  // first: a search over thousands of items reads nothing else of most
  std::string _name{};
  std::string _displayName{};
  std::shared_ptr<const IconImage> _icon{};
  std::weak_ptr<AppFolderItem> _parentFolder{};
};

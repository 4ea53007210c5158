#pragma once

#include <map>
#include <memory>

#include "Controllers/MainMenuDelegate.h"
#include "Controllers/Surface.h"
#include "Platform/Opener.h"

/// The main menu: which of its items are enabled, and where its clicks go. The items that nothing here names are always
/// enabled. Main thread only.
class MainMenuController : public orvane::Surface {
 public:
  enum class Item { kRefresh, kLogout, kToggleSidePanel, kDiMode };

  MainMenuController(std::shared_ptr<orvane::Opener> opener, std::shared_ptr<orvane::GlobalQueue> globalQueue);

  /// Not owned; null for none, which makes clicks nothing.
  void setDelegate(MainMenuDelegate* delegate) { _delegate = delegate; }

  void setEnabled(Item item, bool isEnabled);
  /// Whether the item is enabled.
  bool validateMenuItem(Item item) const;

  void onRefreshClick() { tell(Item::kRefresh, &MainMenuDelegate::mainMenuWantsRefreshApplicationList); }
  void onLogoutClick() { tell(Item::kLogout, &MainMenuDelegate::mainMenuWantsLogout); }
  void onToggleSidePanelClick() { tell(Item::kToggleSidePanel, &MainMenuDelegate::mainMenuWantsToggleSidePanel); }
  void onDiModeClick() { tell(Item::kDiMode, &MainMenuDelegate::mainMenuWantsSwitchToDiMode); }
  void onSettingsClick() { tell(&MainMenuDelegate::mainMenuWantsShowSettingsWindow); }
  void onAboutClick() { tell(&MainMenuDelegate::mainMenuWantsShowAboutWindow); }
  /// Opens the help page in the browser; that this can't be done only stands in the log.
  void onHelpClick();

 private:
  void tell(void (MainMenuDelegate::*wish)()) const {
    if (_delegate != nullptr) (_delegate->*wish)();
  }
  // A click that the toolkit delivers late, on an item that is disabled by now, is nothing.
  void tell(Item item, void (MainMenuDelegate::*wish)()) const {
    if (validateMenuItem(item)) tell(wish);
  }

  const std::shared_ptr<orvane::Opener> _opener;
  const std::shared_ptr<orvane::GlobalQueue> _globalQueue;
  MainMenuDelegate* _delegate = nullptr;
  std::map<Item, bool> _isEnabled{};
};

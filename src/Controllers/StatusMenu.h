#pragma once

#include <memory>
#include <string>
#include <vector>

class AppItem;
class OvFarm;

/// What a click on an item of the status menu does; kNone for what only opens or separates.
enum class StatusMenuAction {
  kNone,
  kConnectToFarm,
  kLaunchApplication,
  kExpandedView,
  kRefresh,
  kLogout,
  kCancelConnect,
  kSettings,
  kAbout
};

/// An item of the status menu, with the menu below it. A value.
struct StatusMenuItem {
  std::string title{};
  StatusMenuAction action = StatusMenuAction::kNone;
  bool isEnabled = true;
  bool isSeparator = false;
  std::vector<StatusMenuItem> submenu{};
  std::shared_ptr<OvFarm> farm{};   ///< of kConnectToFarm
  std::shared_ptr<AppItem> item{};  ///< of kLaunchApplication
};

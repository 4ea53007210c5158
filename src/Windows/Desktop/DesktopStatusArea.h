#pragma once

#include <QTimer>
#include <functional>
#include <memory>

#include "Controllers/DiModeController.h"
#include "Platform/StatusArea.h"

namespace orvane {

/// The desktop's status area; a small window where the desktop has none, or has lost it.
class DesktopStatusArea : public StatusArea {
 public:
  /// The controller of the item, null outside its mode; asked once the item is there.
  using Controller = std::function<std::shared_ptr<DiModeController>()>;

  explicit DesktopStatusArea(std::function<void()> quit) : quit_(std::move(quit)) {}
  /// To be called before the first item.
  void attach(Controller controller) { controller_ = std::move(controller); }

  std::unique_ptr<StatusItem> addItem() override;
  /// Brings the window that stands for the item to the front, if there is one.
  void showResident();

 private:
  class Item;

  const std::function<void()> quit_;
  Controller controller_{};
  Item* item_ = nullptr;
};

}  // namespace orvane

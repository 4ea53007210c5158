#pragma once

#include <QMenu>
#include <QTimer>
#include <functional>
#include <vector>

#include "Controllers/StatusMenu.h"

namespace orvane {

/// The menu of the status item, drawn from its controller's.
///
/// Folders of applications are filled when they open, so that thousands of applications cost nothing before.
class StatusMenu : public QMenu {
 public:
  using Items = std::vector<StatusMenuItem>;
  using Click = std::function<void(const StatusMenuItem&)>;

  StatusMenu(Click onClick, std::function<void()> quit);

  /// Draws these, now or when the menu has closed.
  void setItems(Items items);

 private:
  void rebuild();
  void fill(QMenu& menu, const Items& items);

  const Click onClick_;
  const std::function<void()> quit_;
  Items items_{};
};

}  // namespace orvane

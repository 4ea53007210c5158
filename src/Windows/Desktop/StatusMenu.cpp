#include "Windows/Desktop/StatusMenu.h"

#include "Windows/Style/Text.h"

namespace orvane {

StatusMenu::StatusMenu(Click onClick, std::function<void()> quit)
    : onClick_(std::move(onClick)), quit_(std::move(quit)) {
  setObjectName(QStringLiteral("statusMenu"));
  // A click on an item comes behind the close.
  connect(this, &QMenu::aboutToHide, this, &StatusMenu::rebuild, Qt::QueuedConnection);
}

void StatusMenu::setItems(Items items) {
  items_ = std::move(items);
  if (!isVisible()) rebuild();
}

void StatusMenu::rebuild() {
  for (QAction* action : actions()) {
    removeAction(action);
    if (action->menu() != nullptr) action->menu()->deleteLater();
    action->deleteLater();
  }
  fill(*this, items_);
  addSeparator();
  connect(addAction(text("View.Menu.Quit")), &QAction::triggered, this, [this] { quit_(); });
}

void StatusMenu::fill(QMenu& menu, const Items& items) {
  for (const StatusMenuItem& item : items) {
    if (item.isSeparator) {
      menu.addSeparator();
      continue;
    }
    const QString title = toQString(item.title).replace(QLatin1Char('&'), QLatin1String("&&"));
    if (item.submenu.empty()) {
      QAction* action = menu.addAction(title);
      action->setEnabled(item.isEnabled);
      // Behind the menu's own handling of it: what a click does may take the menu away.
      connect(
          action, &QAction::triggered, this, [this, item] { onClick_(item); }, Qt::QueuedConnection);
      continue;
    }
    QMenu* submenu = menu.addMenu(title);
    submenu->menuAction()->setEnabled(item.isEnabled);
    connect(submenu, &QMenu::aboutToShow, this, [this, submenu, items = item.submenu] {
      if (submenu->isEmpty()) fill(*submenu, items);
    });
  }
}

}  // namespace orvane

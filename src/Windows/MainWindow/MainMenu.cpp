#include "Windows/MainWindow/MainMenu.h"

#include "Controllers/MainMenuController.h"
#include "Windows/Style/Symbols.h"
#include "Windows/Style/Text.h"

namespace orvane {

namespace {

using Item = MainMenuController::Item;
using Click = void (MainMenuController::*)();

}  // namespace

MainMenu::MainMenu(MainMenuController& controller, std::function<void()> quit, QWidget* window)
    : QMenu(window), controller_(controller) {
  setObjectName(QStringLiteral("mainMenu"));
  constexpr int kAlways = -1;
  const struct {
    const char* objectName;
    QString title;
    const char* keys;
    const char* symbol;
    int item;
    Click click;
    bool endsGroup;
  } kRows[] = {
      {"menuConnections", text("DiMode.Menu.Connections"), "Ctrl+L", "menu", int(Item::kToggleSidePanel),
       &MainMenuController::onToggleSidePanelClick, false},
      {"menuRefresh", text("DiMode.Menu.Refresh"), "F5", "refresh", int(Item::kRefresh),
       &MainMenuController::onRefreshClick, false},
      {"menuLogout", text("DiMode.Menu.Logout"), "Ctrl+Shift+L", "sign-out", int(Item::kLogout),
       &MainMenuController::onLogoutClick, true},
      {"menuDiMode", text("View.Menu.DesktopIntegration"), "Ctrl+D", "desktop", int(Item::kDiMode),
       &MainMenuController::onDiModeClick, true},
      {"menuSettings", text("View.Menu.Settings"), "Ctrl+,", "settings", kAlways, &MainMenuController::onSettingsClick,
       false},
      {"menuHelp", text("View.Menu.Help"), "F1", "help", kAlways, &MainMenuController::onHelpClick, false},
      {"menuAbout", text("DiMode.Menu.About"), "", "info", kAlways, &MainMenuController::onAboutClick, true},
  };
  for (const auto& row : kRows) {
    QAction* action = addAction(symbolIcon(QLatin1String(row.symbol)), row.title);
    action->setObjectName(QLatin1String(row.objectName));
    action->setShortcut(QKeySequence(QLatin1String(row.keys)));
    connect(action, &QAction::triggered, this, [this, click = row.click] { (controller_.*click)(); });
    if (row.item != kAlways) actions_.emplace_back(action, row.item);
    window->addAction(action);
    if (row.endsGroup) addSeparator();
  }
  QAction* end = addAction(symbolIcon(QStringLiteral("close")), text("View.Menu.Quit"));
  end->setObjectName(QStringLiteral("menuQuit"));
  end->setShortcut(QKeySequence(QStringLiteral("Ctrl+Q")));
  connect(end, &QAction::triggered, this, [quit = std::move(quit)] { quit(); });
  window->addAction(end);
  controller_.setOnChange([this] { refresh(); });
  refresh();
}

void MainMenu::refresh() {
  for (const auto& [action, item] : actions_) action->setEnabled(controller_.validateMenuItem(static_cast<Item>(item)));
}

}  // namespace orvane

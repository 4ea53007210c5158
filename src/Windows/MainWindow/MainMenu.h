#pragma once

#include <QMenu>
#include <functional>
#include <vector>

class MainMenuController;

namespace orvane {

/// The main menu, whose keys work in the whole window that it is made for. The controller outlives it.
class MainMenu : public QMenu {
 public:
  MainMenu(MainMenuController& controller, std::function<void()> quit, QWidget* window);

 private:
  void refresh();

  MainMenuController& controller_;
  std::vector<std::pair<QAction*, int>> actions_{};  // with what of the controller's items enables it
};

}  // namespace orvane

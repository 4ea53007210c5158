#pragma once

#include <memory>

#include "Platform/ApplicationProcess.h"
#include "Platform/Autostart.h"
#include "Platform/ModifierKeys.h"
#include "Platform/Opener.h"
#include "Platform/Queues.h"
#include "Platform/Screens.h"
#include "Platform/StatusArea.h"
#include "Platform/Timer.h"
#include "Platform/UserNotifications.h"
#include "Platform/WindowHost.h"

namespace orvane {

/// The desktop that the program's controllers stand on. No member is null.
struct Desktop {
  std::shared_ptr<MainQueue> mainQueue;
  std::shared_ptr<GlobalQueue> globalQueue;
  std::shared_ptr<Timer> timer;
  std::shared_ptr<Opener> opener;
  std::shared_ptr<WindowHost> windows;
  std::shared_ptr<ApplicationProcess> process;
  std::shared_ptr<UserNotifications> notifications;
  std::shared_ptr<StatusArea> statusArea;
  std::shared_ptr<ModifierKeys> modifierKeys;
  std::shared_ptr<Screens> screens;
  std::shared_ptr<Autostart> autostart;
};

}  // namespace orvane

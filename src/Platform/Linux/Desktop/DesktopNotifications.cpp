#include "Platform/Linux/Desktop/DesktopNotifications.h"

#include <utility>

#include "Platform/Linux/Desktop/NotificationServer.h"

namespace orvane {

DesktopNotifications::DesktopNotifications(Program program, QDBusConnection bus)
    : isActive_(std::move(program.isActive)),
      server_(std::make_unique<NotificationServer>(std::move(bus), std::move(program.showInWindow),
                                                   std::move(program.activate))) {}

DesktopNotifications::~DesktopNotifications() = default;

void DesktopNotifications::deliver(const std::string& title, const std::string& text) {
  if (delegate_ != nullptr && isActive_() && !delegate_->userNotificationCenterShouldPresentNotification()) return;
  server_->notify(title, text);
}

}  // namespace orvane

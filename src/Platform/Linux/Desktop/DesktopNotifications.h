#pragma once

#include <QDBusConnection>
#include <functional>
#include <memory>
#include <string>

#include "Platform/UserNotifications.h"

namespace orvane {

/// Notifications of the service `org.freedesktop.Notifications` on the session bus, in the form that it can show. All
/// calls return at once; what comes of them comes by the main thread's loop.
class DesktopNotifications final : public UserNotifications {
 public:
  /// What the notifications do to the program. None is empty.
  struct Program {
    /// Shows a notification in the program's own window, as the desktop can't.
    std::function<void(const std::string& title, const std::string& text)> showInWindow;
    /// A notification was clicked. The token may be empty: see activateWindow.
    std::function<void(const std::string& activationToken)> activate;
    /// Whether the program is the active one, which is when the delegate is asked.
    std::function<bool()> isActive;
  };

  /// On the main thread, with a QCoreApplication whose display name goes with the notifications.
  explicit DesktopNotifications(Program program, QDBusConnection bus = QDBusConnection::sessionBus());
  ~DesktopNotifications() override;
  DesktopNotifications(const DesktopNotifications&) = delete;
  DesktopNotifications& operator=(const DesktopNotifications&) = delete;

  void setDelegate(UserNotificationsDelegate* delegate) override { delegate_ = delegate; }
  void deliver(const std::string& title, const std::string& text) override;

 private:
  const std::function<bool()> isActive_;
  UserNotificationsDelegate* delegate_ = nullptr;
  const std::unique_ptr<class NotificationServer> server_;
};

}  // namespace orvane

#pragma once

#include <string>

namespace orvane {

/// Decides about notifications.
class UserNotificationsDelegate {
 public:
  virtual ~UserNotificationsDelegate() = default;
  /// Whether a notification is shown while the program is the active one.
  virtual bool userNotificationCenterShouldPresentNotification() const = 0;
};

/// The desktop's notifications. Main thread only.
class UserNotifications {
 public:
  virtual ~UserNotifications() = default;
  /// Not owned; null takes it away. Without one the desktop decides.
  virtual void setDelegate(UserNotificationsDelegate* delegate) = 0;
  virtual void deliver(const std::string& title, const std::string& text) = 0;
};

}  // namespace orvane

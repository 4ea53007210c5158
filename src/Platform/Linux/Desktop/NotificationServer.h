#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QStringList>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace orvane {

/// The service `org.freedesktop.Notifications` as its client: asks once what it can show, and gives it that. Main
/// thread only.
class NotificationServer final : public QObject {
  Q_OBJECT

 public:
  using ShowInWindow = std::function<void(const std::string& title, const std::string& text)>;
  using Activate = std::function<void(const std::string& activationToken)>;

  NotificationServer(QDBusConnection bus, ShowInWindow showInWindow, Activate activate);

  /// Returns at once. A notification that the service doesn't take is shown in the window, later.
  void notify(const std::string& title, const std::string& text);

 private slots:
  void activationTokenCame(uint id, const QString& token);
  void actionInvoked(uint id, const QString& action);
  void notificationClosed(uint id, uint reason);

 private:
  struct Notification {
    std::string title;
    std::string text;
  };

  void sendWaiting();
  void send(const Notification& notification);
  void forgetServer();
  // Calls back once with the answer, or with null for none.
  void call(const QString& method, const QVariantList& arguments, std::function<void(const QVariantList*)> answered);

  QDBusConnection bus_;
  const ShowInWindow showInWindow_;
  const Activate activate_;
  QDBusServiceWatcher watcher_;
  std::optional<QStringList> capabilities_{};
  bool isAsking_ = false;
  std::deque<Notification> waiting_{};   // for the capabilities
  std::map<uint, std::string> shown_{};  // with the token of a click that is about to be told
};

}  // namespace orvane

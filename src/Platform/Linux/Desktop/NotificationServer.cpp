#include "Platform/Linux/Desktop/NotificationServer.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QGuiApplication>
#include <QTimer>
#include <chrono>
#include <utility>

#include "Platform/Linux/Desktop/ApplicationIdentity.h"
#include "Support/OvWriteLog.h"

namespace orvane {
namespace {

constexpr char kService[] = "org.freedesktop.Notifications";
constexpr char kPath[] = "/org/freedesktop/Notifications";
constexpr char kDefaultAction[] = "default";

// The service may have to be started first.
constexpr std::chrono::milliseconds kPatience{10'000};

QString withoutMarkup(QString text) { return text.replace('&', "&amp;").replace('<', "&lt;").replace('>', "&gt;"); }

}  // namespace

NotificationServer::NotificationServer(QDBusConnection bus, ShowInWindow showInWindow, Activate activate)
    : bus_(std::move(bus)),
      showInWindow_(std::move(showInWindow)),
      activate_(std::move(activate)),
      watcher_(kService, bus_, QDBusServiceWatcher::WatchForOwnerChange) {
  connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this, &NotificationServer::forgetServer);
  // From any sender: naming one would ask the bus, and wait for it. The identifiers are looked at.
  bus_.connect({}, kPath, kService, "ActivationToken", this, SLOT(activationTokenCame(uint, QString)));
  bus_.connect({}, kPath, kService, "ActionInvoked", this, SLOT(actionInvoked(uint, QString)));
  bus_.connect({}, kPath, kService, "NotificationClosed", this, SLOT(notificationClosed(uint, uint)));
}

void NotificationServer::notify(const std::string& title, const std::string& text) {
  waiting_.push_back({title, text});
  if (!bus_.isConnected()) {
    QTimer::singleShot(0, this, &NotificationServer::sendWaiting);
  } else if (capabilities_) {
    sendWaiting();
  } else if (!std::exchange(isAsking_, true)) {
    call("GetCapabilities", {}, [this](const QVariantList* answer) {
      isAsking_ = false;
      if (answer != nullptr) capabilities_ = answer->value(0).toStringList();
      sendWaiting();
    });
  }
}

void NotificationServer::sendWaiting() {
  for (const Notification& notification : std::exchange(waiting_, {})) {
    if (capabilities_ && bus_.isConnected()) {
      send(notification);
    } else {
      showInWindow_(notification.title, notification.text);
    }
  }
}

void NotificationServer::send(const Notification& notification) {
  QString summary = QString::fromStdString(notification.title), body = QString::fromStdString(notification.text);
  if (capabilities_->contains("body-markup")) body = withoutMarkup(body);
  if (!capabilities_->contains("body")) {
    if (!summary.isEmpty() && !body.isEmpty()) summary += ": ";
    summary += body;
    body.clear();
  }
  const QString name = QGuiApplication::applicationDisplayName();
  const QStringList actions = capabilities_->contains("actions") ? QStringList{kDefaultAction, name} : QStringList();
  const QVariantMap hints{{"desktop-entry", kApplicationId}};
  constexpr uint kReplacesNone = 0;
  constexpr int kAsLongAsTheServerLikes = -1;
  call("Notify", {name, kReplacesNone, kApplicationId, summary, body, actions, hints, kAsLongAsTheServerLikes},
       [this, notification](const QVariantList* answer) {
         if (answer == nullptr) {
           showInWindow_(notification.title, notification.text);
         } else {
           shown_[answer->value(0).toUInt()];
         }
       });
}

void NotificationServer::activationTokenCame(uint id, const QString& token) {
  const auto notification = shown_.find(id);
  if (notification != shown_.end()) notification->second = token.toStdString();
}

void NotificationServer::actionInvoked(uint id, const QString& action) {
  const auto notification = shown_.find(id);
  if (notification != shown_.end() && action == kDefaultAction) activate_(std::exchange(notification->second, {}));
}

void NotificationServer::notificationClosed(uint id, uint) { shown_.erase(id); }

void NotificationServer::forgetServer() {
  capabilities_.reset();
  shown_.clear();
}

void NotificationServer::call(const QString& method, const QVariantList& arguments,
                              std::function<void(const QVariantList*)> answered) {
  QDBusMessage message = QDBusMessage::createMethodCall(kService, kPath, kService, method);
  message.setArguments(arguments);
  auto* const watcher = new QDBusPendingCallWatcher(bus_.asyncCall(message, static_cast<int>(kPatience.count())), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this,
          [method, answered = std::move(answered)](QDBusPendingCallWatcher* finished) {
            finished->deleteLater();
            const QDBusMessage answer = finished->reply();
            if (answer.type() == QDBusMessage::ReplyMessage) {
              const QVariantList values = answer.arguments();
              answered(&values);
              return;
            }
            OvWriteLog(2, "%s: %s: %s", "NotificationServer::call", qPrintable(method),
                       qPrintable(answer.errorMessage()));
            answered(nullptr);
          });
}

}  // namespace orvane

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include "Platform/Linux/Desktop/DesktopNotifications.h"
#include "QtApplicationOfTest.h"
#include "Support/SessionBusOfTest.h"

namespace {

using testing::ElementsAre;

constexpr char kService[] = "org.freedesktop.Notifications";
constexpr char kPath[] = "/org/freedesktop/Notifications";

// A notification server that writes down what it is asked for.
class ServerOfTest : public QDBusVirtualObject {
 public:
  ServerOfTest(const std::string& bus, QStringList capabilities)
      : bus_(QDBusConnection::connectToBus(QString::fromStdString(bus), "server")), capabilities_(capabilities) {
    bus_.registerVirtualObject(kPath, this);
    bus_.registerService(kService);
  }
  ~ServerOfTest() override { QDBusConnection::disconnectFromBus("server"); }

  bool fails = false;
  std::vector<std::string> asked{};
  QVariantMap hints{};

  void emitSignal(const char* name, const QVariantList& values) {
    QDBusMessage signal = QDBusMessage::createSignal(kPath, kService, name);
    signal.setArguments(values);
    bus_.send(signal);
  }

 private:
  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override {
    const QVariantList values = message.arguments();
    if (message.member() == "GetCapabilities") {
      asked.emplace_back("capabilities");
      bus_.send(message.createReply(capabilities_));
    } else if (fails) {
      asked.emplace_back("refused");
      bus_.send(message.createErrorReply(QDBusError::Failed, "no"));
    } else {
      asked.push_back((values.at(2).toString() + "|" + values.at(3).toString() + "|" + values.at(4).toString() + "|" +
                       values.at(5).toStringList().join(','))
                          .toStdString());
      hints = qdbus_cast<QVariantMap>(values.at(6));
      bus_.send(message.createReply(++lastId_));
    }
    return true;
  }

  QDBusConnection bus_;
  const QStringList capabilities_;
  uint lastId_ = 41;
};

class DesktopNotificationsTest : public testing::Test, public orvane::UserNotificationsDelegate {
 protected:
  DesktopNotificationsTest() { QGuiApplication::setApplicationDisplayName("Orvane"); }
  ~DesktopNotificationsTest() override { QDBusConnection::disconnectFromBus("client"); }

  bool userNotificationCenterShouldPresentNotification() const override { return shouldPresent_; }
  void startServer(const QStringList& capabilities) {
    server_.reset();
    server_ = std::make_unique<ServerOfTest>(bus_.address(), capabilities);
    // What the bus told the client before its answer has arrived then.
    client_.call(QDBusMessage::createMethodCall("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "GetId"));
    QCoreApplication::processEvents();
  }
  // Waits until the server was asked for so much.
  std::vector<std::string> asked(size_t count) {
    EXPECT_TRUE(application_.until([&] { return server_->asked.size() >= count; }));
    return std::exchange(server_->asked, {});
  }
  std::string inWindow() {
    EXPECT_TRUE(application_.until([&] { return !inWindow_.empty(); }));
    return std::exchange(inWindow_, "");
  }

  const SessionBusOfTest bus_{};
  const QtApplicationOfTest application_{};
  bool shouldPresent_ = true, isActive_ = false;
  std::string inWindow_{};
  std::vector<std::string> activations_{};
  std::unique_ptr<ServerOfTest> server_{};
  QDBusConnection client_ = QDBusConnection::connectToBus(QString::fromStdString(bus_.address()), "client");
  orvane::DesktopNotifications notifications_{
      {.showInWindow = [this](const auto& title, const auto& text) { inWindow_ += title + "|" + text; },
       .activate = [this](const auto& token) { activations_.push_back(token); },
       .isActive = [this] { return isActive_; }},
      client_};
};

TEST_F(DesktopNotificationsTest, AreInTheFormThatTheServerCanShowAndAskItOnce) {
  const std::string icon = "example.orvane.Connector|";
  const std::tuple<QStringList, std::string, std::string> rows[] = {
      {{}, "<T>: a & b", "<T>: ü<b>&amp;"},
      {{"body"}, "<T>|a & b", "<T>|ü<b>&amp;"},
      {{"body", "body-markup", "actions"}, "<T>|a &amp; b", "<T>|ü&lt;b&gt;&amp;amp;"},
  };
  for (const auto& [capabilities, first, second] : rows) {
    startServer(capabilities);
    notifications_.deliver("<T>", "a & b");
    notifications_.deliver("<T>", "ü<b>&amp;");
    const std::string end =
        (capabilities.contains("body") ? "|" : "||") + std::string(capabilities.size() > 1 ? "default,Orvane" : "");
    EXPECT_THAT(asked(3), ElementsAre("capabilities", icon + first + end, icon + second + end));
    EXPECT_EQ(server_->hints.value("desktop-entry"), "example.orvane.Connector");
    notifications_.deliver("", "text");
    EXPECT_THAT(asked(1), ElementsAre(icon + (capabilities.empty() ? "text" : "|text") + end));
  }
  EXPECT_EQ(inWindow_, "");
}

TEST_F(DesktopNotificationsTest, AppearInTheWindowWhereTheServerIsAbsentOrFails) {
  notifications_.deliver("absent", "1");
  EXPECT_EQ(inWindow_, "") << "within the call";
  EXPECT_EQ(inWindow(), "absent|1");
  startServer({"body"});
  server_->fails = true;
  notifications_.deliver("fails", "2");
  EXPECT_EQ(inWindow(), "fails|2");
  server_.reset();
  notifications_.deliver("gone", "3");
  EXPECT_EQ(inWindow(), "gone|3");
  orvane::DesktopNotifications alone({[this](const auto& title, const auto&) { inWindow_ += title; }, {}, {}},
                                     QDBusConnection("none"));
  alone.deliver("no bus", "4");
  EXPECT_EQ(inWindow(), "no bus");
}

TEST_F(DesktopNotificationsTest, AClickOnOneOfOursActivatesTheProgramWithItsToken) {
  startServer({"actions"});
  notifications_.deliver("a", "");
  notifications_.deliver("b", "");
  asked(3);
  server_->emitSignal("ActivationToken", {7u, "not ours"});
  server_->emitSignal("ActionInvoked", {7u, "default"});
  server_->emitSignal("ActionInvoked", {42u, "other"});
  server_->emitSignal("ActivationToken", {43u, "token"});
  server_->emitSignal("ActionInvoked", {43u, "default"});
  server_->emitSignal("NotificationClosed", {43u, 2u});
  server_->emitSignal("ActionInvoked", {43u, "default"});
  server_->emitSignal("ActionInvoked", {42u, "default"});
  EXPECT_TRUE(application_.until([&] { return activations_.size() == 2; }));
  EXPECT_THAT(activations_, ElementsAre("token", ""));
}

TEST_F(DesktopNotificationsTest, TheDelegateIsAskedWhileTheProgramIsActive) {
  startServer({});
  std::string delivered;
  const auto deliver = [&](const std::string& title) { notifications_.deliver(title, ""); };
  isActive_ = true, shouldPresent_ = false;
  deliver("no delegate");
  notifications_.setDelegate(this);
  deliver("dropped");
  isActive_ = false;
  deliver("in the background");
  isActive_ = true, shouldPresent_ = true;
  deliver("wanted");
  EXPECT_THAT(asked(4), ElementsAre("capabilities", testing::HasSubstr("no delegate"),
                                    testing::HasSubstr("in the background"), testing::HasSubstr("wanted")));
}

}  // namespace

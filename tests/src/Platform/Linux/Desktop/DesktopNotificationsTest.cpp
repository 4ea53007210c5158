#include <QDBusMessage>
#include <QDBusVirtualObject>

#include "Platform/Linux/Desktop/DesktopNotifications.h"
#include "QtApplicationOfTest.h"
#include "Support/SessionBusOfTest.h"

namespace {

constexpr char kService[] = "org.freedesktop.Notifications";
constexpr char kPath[] = "/org/freedesktop/Notifications";

// A notification server that writes down what it is asked for.
class ServerOfTest : public QDBusVirtualObject {
 public:
  ServerOfTest(const std::string& bus, const QStringList& capabilities)
      : bus_(QDBusConnection::connectToBus(QString::fromStdString(bus), "server")), capabilities_(capabilities) {
    bus_.registerVirtualObject(kPath, this);
    bus_.registerService(kService);
  }
  ~ServerOfTest() override { QDBusConnection::disconnectFromBus("server"); }

  bool fails = false;
  QStringList asked{};

  void emitSignal(const char* name, const QVariantList& values) {
    QDBusMessage signal = QDBusMessage::createSignal(kPath, kService, name);
    signal.setArguments(values);
    bus_.send(signal);
  }

 private:
  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override {
    QStringList values;
    for (const int index : {2, 3, 4, 5}) values += message.arguments().value(index).toStringList().join(',');
    asked += message.arguments().empty() ? "capabilities" : values.join('|');
    bus_.send(fails                         ? message.createErrorReply(QDBusError::Failed, "no")
              : message.arguments().empty() ? message.createReply(capabilities_)
                                            : message.createReply(++lastId_));
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
  // Waits until the server was asked for so much; in one line.
  std::string asked(qsizetype count) {
    EXPECT_TRUE(application_.until([&] { return server_->asked.size() >= count; }));
    return std::exchange(server_->asked, {}).join("; ").toStdString();
  }
  std::string inWindow() {
    EXPECT_TRUE(application_.until([&] { return !inWindow_.empty(); }));
    return std::exchange(inWindow_, "");
  }

  SessionBusOfTest bus_{};
  const QtApplicationOfTest application_{};
  bool shouldPresent_ = false, isActive_ = false;
  std::string inWindow_{}, activations_{};
  std::unique_ptr<ServerOfTest> server_{};
  QDBusConnection client_ = QDBusConnection::connectToBus(QString::fromStdString(bus_.address()), "client");
  orvane::DesktopNotifications notifications_{
      {.showInWindow = [this](const auto& title, const auto& text) { inWindow_ += title + "|" + text; },
       .activate = [this](const auto& token) { activations_ += "activate " + token + ";"; },
       .isActive = [this] { return isActive_; }},
      client_};
};

TEST_F(DesktopNotificationsTest, AreInTheFormThatTheServerCanShowAndAskItOnce) {
  const std::tuple<QStringList, const char*, const char*> rows[] = {
      {{}, "<T>: ü<b>&amp;||", "text||"},
      {{"body"}, "<T>|ü<b>&amp;|", "|text|"},
      {{"body", "body-markup", "actions"}, "<T>|ü&lt;b&gt;&amp;amp;|default,Orvane", "|text|default,Orvane"},
  };
  const std::string icon = "example.orvane.Connector|";
  for (const auto& [capabilities, first, second] : rows) {
    startServer(capabilities);
    notifications_.deliver("<T>", "ü<b>&amp;");
    notifications_.deliver("", "text");
    EXPECT_EQ(asked(3), "capabilities; " + icon + first + "; " + icon + second);
    notifications_.deliver("", "text");
    EXPECT_EQ(asked(1), icon + second);
  }
  EXPECT_EQ(inWindow_, "");
}

TEST_F(DesktopNotificationsTest, AppearInTheWindowWhereTheServerIsAbsentOrFails) {
  notifications_.deliver("absent", "1");
  EXPECT_EQ(inWindow_, "") << "within the call";
  EXPECT_EQ(inWindow(), "absent|1");
  startServer({"body"});
  notifications_.deliver("", "");
  asked(2);
  server_->fails = true;
  notifications_.deliver("fails", "2");
  EXPECT_EQ(inWindow(), "fails|2");
  bus_.kill();
  notifications_.deliver("no bus", "3");
  EXPECT_EQ(inWindow(), "no bus|3");
}

TEST_F(DesktopNotificationsTest, AClickOnOneOfOursActivatesTheProgramWithItsToken) {
  startServer({"actions"});
  notifications_.deliver("a", "");
  notifications_.deliver("b", "");
  asked(3);
  const auto click = [&](uint id, const char* action) { server_->emitSignal("ActionInvoked", {id, action}); };
  server_->emitSignal("ActivationToken", {7u, "foreign"});
  click(7, "default"), click(42, "other");
  server_->emitSignal("ActivationToken", {43u, "token"});
  click(43, "default");
  server_->emitSignal("NotificationClosed", {43u, 2u});
  click(43, "default"), click(42, "default");
  EXPECT_TRUE(application_.until([&] { return activations_.ends_with(" ;"); }));
  EXPECT_EQ(activations_, "activate token;activate ;");
}

TEST_F(DesktopNotificationsTest, TheDelegateIsAskedWhileTheProgramIsActive) {
  startServer({});
  isActive_ = true;
  notifications_.deliver("no delegate", "");
  notifications_.setDelegate(this);
  notifications_.deliver("dropped", "");
  isActive_ = false;
  notifications_.deliver("background", "");
  isActive_ = shouldPresent_ = true;
  notifications_.deliver("wanted", "");
  EXPECT_THAT(asked(4), testing::ContainsRegex("no delegate.*; [^;]*background.*; [^;]*wanted"));
}

}  // namespace

#include "Platform/Linux/Desktop/ApplicationService.h"

#include <QDBusMessage>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <cstdlib>
#include <list>
#include <utility>

#include "Platform/Linux/Desktop/ApplicationIdentity.h"
#include "Platform/Linux/Desktop/ApplicationObject.h"
#include "Support/OvWriteLog.h"

namespace orvane {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// How long a start by the bus waits for the request that it was started for, which the bus sends with the name.
constexpr milliseconds kFirstRequestPatience{2'000};

constexpr milliseconds kReleasePatience{1'000};

// How often the name's owner may refuse a request by an error before it counts as one that doesn't answer: one that is
// on its way out may.
constexpr int kAttempts = 20;

constexpr char kBus[] = "org.freedesktop.DBus";
constexpr char kInterface[] = "org.freedesktop.Application";

QDBusMessage callToBus(const char* method, const QVariantList& arguments) {
  QDBusMessage call = QDBusMessage::createMethodCall(kBus, "/org/freedesktop/DBus", kBus, method);
  call.setArguments(arguments);
  return call;
}

enum class Ownership { kOurs, kAnothers, kUnknown };

Ownership askForName(QDBusConnection& bus, milliseconds patience) {
  constexpr uint kDoNotQueue = 4, kBecameOwner = 1, kOwnerExists = 3, kIsOwner = 4;
  const QDBusMessage answer = bus.call(callToBus("RequestName", {QString(kApplicationId), kDoNotQueue}), QDBus::Block,
                                       static_cast<int>(patience.count()));
  const uint result = answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0).toUInt() : 0;
  if (result == kBecameOwner || result == kIsOwner) return Ownership::kOurs;
  return result == kOwnerExists ? Ownership::kAnothers : Ownership::kUnknown;
}

QDBusMessage callToInstance(const char* method) {
  QDBusMessage call = QDBusMessage::createMethodCall(kApplicationId, kApplicationPath, kInterface, method);
  call.setAutoStartService(false);  // one that has ended is replaced by this process, not by one more
  return call;
}

// One thing that a start asks for: as a call to the running instance, and as a request of the first one; empty if that
// has nothing to do for it.
struct Wish {
  QDBusMessage call;
  ApplicationRequest request;
};

std::list<Wish> wishesOf(const ApplicationArguments& arguments, const std::string& token) {
  QVariantMap platformData;
  if (!token.empty()) platformData[kActivationToken] = platformData[kStartupId] = QString::fromStdString(token);
  std::list<Wish> wishes;
  const auto wish = [&](const char* method, QVariantList values, ApplicationRequest request) {
    wishes.push_back({callToInstance(method), std::move(request)});
    wishes.back().call.setArguments(std::move(values) << platformData);
  };
  if (!arguments.addresses.empty()) {
    QStringList addresses;
    for (const std::string& address : arguments.addresses) addresses.push_back(QString::fromStdString(address));
    wish("Open", {addresses}, [addresses = arguments.addresses, token](const ApplicationRequests& requests) {
      requests.open(addresses, token);
    });
  }
  if (!arguments.action.empty()) {
    wish("ActivateAction", {QString::fromStdString(arguments.action), QVariantList()},
         [name = arguments.action, token](const ApplicationRequests& requests) { requests.action(name, token); });
  }
  if (wishes.empty() && !arguments.isBackground && !arguments.isService) wish("Activate", {}, {});
  return wishes;
}

milliseconds timeUntil(Clock::time_point deadline) {
  return std::max(std::chrono::ceil<milliseconds>(deadline - Clock::now()), milliseconds(0));
}

// Hands wishes to the running instance and takes them off the list. @return whether none is left.
bool handOver(QDBusConnection& bus, std::list<Wish>& wishes, Clock::time_point deadline) {
  for (; !wishes.empty(); wishes.pop_front()) {
    const auto patience = static_cast<int>(std::max(timeUntil(deadline), milliseconds(1)).count());
    const QDBusMessage answer = bus.call(wishes.front().call, QDBus::Block, patience);
    if (answer.type() == QDBusMessage::ReplyMessage) continue;
    OvWriteLog(2, "%s: the running instance: %s", __func__, qPrintable(answer.errorMessage()));
    return false;
  }
  return true;
}

ApplicationService::Start negotiate(QDBusConnection& bus, std::list<Wish>& wishes, Clock::time_point deadline) {
  using Start = ApplicationService::Start;
  for (int attempt = 0; attempt < kAttempts && bus.isConnected(); ++attempt) {
    const milliseconds patience = timeUntil(deadline);
    if (patience == milliseconds(0)) break;
    const Ownership ownership = askForName(bus, patience);
    if (ownership == Ownership::kOurs) return Start::kFirst;
    if (ownership == Ownership::kUnknown) return Start::kAlone;
    if (handOver(bus, wishes, deadline)) return Start::kForwarded;
  }
  return bus.isConnected() ? Start::kUnanswered : Start::kAlone;
}

}  // namespace

// Requests that wait for the handler, or for the loop to hand them over.
class ApplicationService::Queue : public QObject {
 public:
  void add(ApplicationRequest request) {
    requests_.push_back(std::move(request));
    if (handler_) handOverSoon();
    if (waitingLoop_ != nullptr) waitingLoop_->quit();
  }

  // Waits until there is a request.
  void awaitFirst(milliseconds patience) {
    if (!requests_.empty()) return;
    QEventLoop loop;
    QTimer::singleShot(patience, &loop, &QEventLoop::quit);
    waitingLoop_ = &loop;
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    waitingLoop_ = nullptr;
  }

  void setHandler(ApplicationRequests handler) {
    handler_ = std::make_shared<const ApplicationRequests>(std::move(handler));
    handOver();
  }

  void drop() {
    handler_.reset();
    requests_.clear();
  }

 private:
  void handOverSoon() { QMetaObject::invokeMethod(this, &Queue::handOver, Qt::QueuedConnection); }

  void handOver() {
    while (handler_ && !requests_.empty()) {
      const ApplicationRequest request = std::move(requests_.front());
      requests_.pop_front();
      if (!requests_.empty()) handOverSoon();  // the request may run a loop of its own, in which the others go on
      request(*std::shared_ptr(handler_));
    }
  }

  std::list<ApplicationRequest> requests_{};
  std::shared_ptr<const ApplicationRequests> handler_{};
  QEventLoop* waitingLoop_ = nullptr;
};

ApplicationService::ApplicationService(QDBusConnection bus) : bus_(std::move(bus)), queue_(std::make_unique<Queue>()) {
  new ApplicationObject(queue_.get(), [this](ApplicationRequest request) { queue_->add(std::move(request)); });
}

ApplicationService::~ApplicationService() { stop(); }

ApplicationService::Start ApplicationService::start(const ApplicationArguments& arguments, const std::string& token,
                                                    milliseconds patience) {
  std::list<Wish> wishes = wishesOf(arguments, token);
  // Before the name is asked for: who finds the name's owner finds the object.
  bus_.registerObject(kApplicationPath, queue_.get(), QDBusConnection::ExportAdaptors);
  const Start start = negotiate(bus_, wishes, Clock::now() + patience);
  ownsName_ = start == Start::kFirst;
  if (!ownsName_) bus_.unregisterObject(kApplicationPath);
  if (!ownsName_ && start != Start::kAlone) return start;
  for (Wish& wish : wishes) {
    if (wish.request) queue_->add(std::move(wish.request));
  }
  if (ownsName_ && arguments.isService) queue_->awaitFirst(kFirstRequestPatience);
  return start;
}

void ApplicationService::setHandler(ApplicationRequests handler) { queue_->setHandler(std::move(handler)); }

void ApplicationService::stop() {
  queue_->drop();
  if (!std::exchange(ownsName_, false)) return;
  // In this order, and what comes meanwhile is refused: whoever sent it asks for the name again, and gets it.
  bus_.call(callToBus("ReleaseName", {QString(kApplicationId)}), QDBus::Block,
            static_cast<int>(kReleasePatience.count()));
  bus_.unregisterObject(kApplicationPath);
}

std::string startupToken() {
  for (const char* const variable : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"}) {
    const char* const token = getenv(variable);
    if (token != nullptr && *token != '\0') return token;
  }
  return {};
}

}  // namespace orvane

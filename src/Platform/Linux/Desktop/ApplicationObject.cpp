#include "Platform/Linux/Desktop/ApplicationObject.h"

#include <utility>

#include "Support/OvWriteLog.h"

namespace orvane {
namespace {

// The token among what a launcher tells of the desktop; an empty text for none, and for what can't be one.
std::string tokenIn(const QVariantMap& platformData) {
  constexpr size_t kLongest = 1024;
  for (const char* const key : {kActivationToken, kStartupId}) {
    std::string token = platformData.value(key).toString().toStdString();
    if (!token.empty() && token.size() <= kLongest) return token;
  }
  return {};
}

}  // namespace

ApplicationObject::ApplicationObject(QObject* object, std::function<void(ApplicationRequest)> take)
    : QDBusAbstractAdaptor(object), take_(std::move(take)) {}

void ApplicationObject::Activate(const QVariantMap& platform_data) {
  take_([token = tokenIn(platform_data)](const ApplicationRequests& requests) { requests.activate(token); });
}

void ApplicationObject::Open(const QStringList& uris, const QVariantMap& platform_data) {
  std::vector<std::string> addresses;
  for (const QString& uri : uris) {
    std::string address = uri.toStdString();
    if (isOpenableAddress(address)) addresses.push_back(std::move(address));
  }
  const auto refused = static_cast<size_t>(uris.size()) - addresses.size();
  if (refused != 0) OvWriteLog(2, "%s: %zu addresses are neither links nor local files", __func__, refused);
  if (addresses.empty()) return;
  take_([addresses = std::move(addresses), token = tokenIn(platform_data)](const ApplicationRequests& requests) {
    requests.open(addresses, token);
  });
}

void ApplicationObject::ActivateAction(const QString& action_name, const QVariantList&,
                                       const QVariantMap& platform_data) {
  std::string name = action_name.toStdString();
  if (!isApplicationAction(name)) {
    OvWriteLog(2, "%s: there is no action \"%.100s\"", __func__, name.c_str());
    return;
  }
  take_([name = std::move(name), token = tokenIn(platform_data)](const ApplicationRequests& requests) {
    requests.action(name, token);
  });
}

}  // namespace orvane

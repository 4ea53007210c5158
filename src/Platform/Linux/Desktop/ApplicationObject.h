#pragma once

#include <QDBusAbstractAdaptor>
#include <QStringList>
#include <QVariantMap>
#include <functional>

#include "Platform/Linux/Desktop/ApplicationService.h"

namespace orvane {

inline constexpr char kActivationToken[] = "activation-token";
inline constexpr char kStartupId[] = "desktop-startup-id";

/// A request as what is to be called for it.
using ApplicationRequest = std::function<void(const ApplicationRequests&)>;

/// The interface `org.freedesktop.Application` of an object: takes what any program of the session may send, and
/// answers at once.
class ApplicationObject final : public QDBusAbstractAdaptor {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

 public:
  /// @param object owns this.
  /// @param take is called with what can be handed to the program; it must not call it yet.
  ApplicationObject(QObject* object, std::function<void(ApplicationRequest)> take);

 public slots:
  void Activate(const QVariantMap& platform_data);
  void Open(const QStringList& uris, const QVariantMap& platform_data);
  void ActivateAction(const QString& action_name, const QVariantList& parameter, const QVariantMap& platform_data);

 private:
  const std::function<void(ApplicationRequest)> take_;
};

}  // namespace orvane

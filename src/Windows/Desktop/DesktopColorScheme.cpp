#include "Windows/Desktop/DesktopColorScheme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QPalette>

namespace orvane {

namespace {

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString kNameSpace = QStringLiteral("org.freedesktop.appearance");
const QString kKey = QStringLiteral("color-scheme");
constexpr uint kPrefersDark = 1;

ColorScheme schemeOfPalette() {
  const QPalette palette = QGuiApplication::palette();
  return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness()
             ? ColorScheme::kDark
             : ColorScheme::kLight;
}

}  // namespace

DesktopColorScheme::DesktopColorScheme(Change onChange) : onChange_(std::move(onChange)), scheme_(schemeOfPalette()) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  bus.connect(kService, kPath, kInterface, QStringLiteral("SettingChanged"), this, SLOT(settingChanged(QDBusMessage)));
  QDBusMessage read = QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Read"));
  read << kNameSpace << kKey;
  auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(read), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
    answer->deleteLater();
    const QDBusPendingReply<QDBusVariant> reply = *answer;
    if (!reply.isError()) take(reply.value().variant());
  });
}

void DesktopColorScheme::settingChanged(const QDBusMessage& message) {
  const QVariantList arguments = message.arguments();
  if (message.signature() != QLatin1String("ssv") || arguments[0] != kNameSpace || arguments[1] != kKey) return;
  take(arguments[2]);
}

// Portals wrap what Read gives once more.
void DesktopColorScheme::take(const QVariant& value) {
  QVariant inner = value;
  while (inner.metaType() == QMetaType::fromType<QDBusVariant>()) inner = inner.value<QDBusVariant>().variant();
  if (!inner.canConvert<uint>()) return;
  scheme_ = inner.toUInt() == kPrefersDark ? ColorScheme::kDark : ColorScheme::kLight;
  onChange_(scheme_);
}

}  // namespace orvane

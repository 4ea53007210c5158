#pragma once

#include <QDBusMessage>
#include <QObject>
#include <functional>

#include "Windows/Style/Theme.h"

namespace orvane {

/// Follows the colour scheme that the user has chosen for the desktop, as its settings portal tells it; without a
/// portal it is that of the toolkit's first palette. Main thread only; never waits.
class DesktopColorScheme : public QObject {
  Q_OBJECT

 public:
  using Change = std::function<void(ColorScheme)>;

  /// @param onChange is called by the main loop, once the portal has answered and at each change; also when nothing
  /// changed.
  explicit DesktopColorScheme(Change onChange);

  /// What is known now.
  ColorScheme scheme() const { return scheme_; }

 private slots:
  void settingChanged(const QDBusMessage& message);

 private:
  void take(const QVariant& value);

  const Change onChange_;
  ColorScheme scheme_;
};

}  // namespace orvane

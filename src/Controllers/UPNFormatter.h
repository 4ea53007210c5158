#pragma once

#include <string>

#include "Controllers/UPNFormatterObserver.h"

/// Follows a user-name field, and knows whether the name in it brings its domain along: as user@domain or DOMAIN\user.
/// Main thread only.
class UPNFormatter {
 public:
  /// @param observer is told of changes of useUPN, and outlives this.
  explicit UPNFormatter(UPNFormatterObserver& observer) : _observer(observer) {}
  UPNFormatter(const UPNFormatter&) = delete;
  UPNFormatter& operator=(const UPNFormatter&) = delete;

  /// Whether the name contains "@" or "\" with something before it. False at first.
  bool useUPN() const { return _useUPN; }

  /// To be called with the field's text whenever it is set or typed in. Any text will do: none is changed or refused.
  void setObjectValue(const std::string& text);

 private:
  UPNFormatterObserver& _observer;
  bool _useUPN = false;
};

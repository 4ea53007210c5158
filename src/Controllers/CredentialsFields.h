#pragma once

#include <string>

#include "Controllers/UPNFormatter.h"
#include "Model/OvCredentials.h"

/// The text fields for a user of the connection editor. Main thread only.
class CredentialsFields : private UPNFormatterObserver {
 public:
  CredentialsFields() = default;

  /// Shows these credentials; null empties the fields.
  void show(const OvCredentials* credentials);
  /// Stores what the fields say of the user; no domain where the name brings it along.
  void scan(OvCredentials& credentials) const;

  void setUserName(const std::string& text);
  void setPassword(SecretText text) { _password = std::move(text); }
  void setDomain(const std::string& text) { _domain = text; }

  const std::string& userName() const { return _userName; }
  bool hasPassword() const { return !_password.empty(); }
  const std::string& domain() const { return _domain; }
  bool isDomainUsable() const { return _isDomainUsable; }

 private:
  void handleUpnUsingChanged(bool useUPN) override { _isDomainUsable = !useUPN; }

  UPNFormatter _upnFormatter{*this};  // on the user-name field
  std::string _userName{};
  SecretText _password{};
  std::string _domain{};
  bool _isDomainUsable = true;
};

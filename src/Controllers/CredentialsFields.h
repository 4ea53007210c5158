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

  /// The secret store may give a password after its credentials were shown. Takes it over unless there is one in the
  /// field, or the user has emptied that. @return whether there was any to take.
  bool takeLatePassword(const OvCredentials& credentials);

  void setUserName(const std::string& text);
  void setPassword(SecretText text);
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
  bool _isPasswordTyped = false;
  std::string _domain{};
  bool _isDomainUsable = true;
};

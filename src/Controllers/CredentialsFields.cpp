#include "Controllers/CredentialsFields.h"

void CredentialsFields::show(const OvCredentials* credentials) {
  const OvCredentials none;
  const OvCredentials& shown = credentials != nullptr ? *credentials : none;
  setUserName(shown.username());
  _password = shown.password();
  _isPasswordTyped = false;
  setDomain(shown.domain());
}

void CredentialsFields::scan(OvCredentials& credentials) const {
  credentials.setUsername(_userName);
  credentials.setPassword(_password);
  credentials.setDomain(_upnFormatter.useUPN() ? "" : _domain);
}

bool CredentialsFields::takeLatePassword(const OvCredentials& credentials) {
  if (hasPassword() || _isPasswordTyped || credentials.password().empty()) return false;
  _password = credentials.password();
  return true;
}

void CredentialsFields::setPassword(SecretText text) {
  _password = std::move(text);
  _isPasswordTyped = true;
}

void CredentialsFields::setUserName(const std::string& text) {
  _userName = text;
  _upnFormatter.setObjectValue(text);
}

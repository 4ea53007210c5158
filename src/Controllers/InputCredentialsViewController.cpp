#include "Controllers/InputCredentialsViewController.h"

#include <utility>

#include "OrvaneCommon/LocalizedText.h"

void InputCredentialsViewController::setupWithCredentials(const OvCredentials* credentials, bool disallowSave,
                                                          InputBlock onDoneBlock) {
  _currentCredentials = credentials == nullptr ? OvCredentials() : *credentials;
  _onInputBlock = std::move(onDoneBlock);
  _userName = _currentCredentials.username();
  _password = _currentCredentials.password();
  _domain = _currentCredentials.domain().empty() ? _currentCredentials.preferredDomain() : _currentCredentials.domain();
  _needToSave = _currentCredentials.needToSave() && !disallowSave;
  _upnFormatter.setObjectValue(_userName);
  _isDomainHidden = _currentCredentials.disableUserDomain() || _upnFormatter.useUPN();
  disallowSaveCredentials(disallowSave);
  hideError();
  setFocused();
}

void InputCredentialsViewController::configureButtonTitlesForManualConnect(bool isManualConnect) {
  _isManualConnect = isManualConnect;
  changed();
}

void InputCredentialsViewController::resetContentWithBlockPerform(bool performsBlock) {
  const InputBlock done = forgetAll();
  if (performsBlock && done) done(std::nullopt);
}

void InputCredentialsViewController::showError(const std::string& text) {
  _errorText = text;
  changed();
}

void InputCredentialsViewController::hideError() {
  _errorText.reset();
  changed();
}

void InputCredentialsViewController::setFocused() { focus(InputCredentialsFocus::kUserName); }

void InputCredentialsViewController::setUserName(const std::string& text) {
  _userName = text;
  _upnFormatter.setObjectValue(_userName);
  changed();
}

void InputCredentialsViewController::setPassword(SecretText text) {
  _password = std::move(text);
  changed();
}

void InputCredentialsViewController::setDomain(const std::string& text) {
  _domain = text;
  changed();
}

void InputCredentialsViewController::setNeedToSave(bool needToSave) {
  _needToSave = needToSave && !_isSaveBoxHidden;
  changed();
}

void InputCredentialsViewController::handleUpnUsingChanged(bool useUPN) {
  if (!_currentCredentials.disableUserDomain()) _isDomainHidden = useUPN;
}

void InputCredentialsViewController::disallowSaveCredentials(bool disallowSave) { _isSaveBoxHidden = disallowSave; }

OvCredentials InputCredentialsViewController::scanCredentials() const {
  OvCredentials credentials = _currentCredentials;
  credentials.setUsername(_userName);
  credentials.setPassword(_password);
  credentials.setDomain(_upnFormatter.useUPN() ? "" : _domain);
  credentials.setNeedToSave(_needToSave);
  return credentials;
}

void InputCredentialsViewController::onConnectClick() {
  if (!_onInputBlock || !isNextEnabled()) return;
  OvCredentials credentials = scanCredentials();
  forgetAll()(std::move(credentials));
}

void InputCredentialsViewController::onCancelClick() { resetContentWithBlockPerform(true); }

InputCredentialsViewController::InputBlock InputCredentialsViewController::forgetAll() {
  _currentCredentials = {};
  _password = {};
  _domain.clear();
  setUserName({});
  return std::exchange(_onInputBlock, nullptr);
}

std::string InputCredentialsViewController::nextTitle() const {
  return _errorText ? orvane::localizedText("UI.Buttons.Retry") : orvane::localizedText("UI.Buttons.Next");
}

std::string InputCredentialsViewController::backTitle() const {
  return _isManualConnect ? orvane::localizedText("UI.Buttons.Cancel") : orvane::localizedText("UI.Buttons.Back");
}

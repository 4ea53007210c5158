#pragma once

#include <functional>
#include <optional>
#include <string>

#include "Controllers/Surface.h"
#include "Controllers/UPNFormatter.h"
#include "Model/OvCredentials.h"

enum class InputCredentialsFocus { kUserName };

/// The page that asks as whom to connect. The password goes in, and comes out with the callback alone.
class InputCredentialsViewController : public orvane::FocusableSurface<InputCredentialsFocus>,
                                       private UPNFormatterObserver {
 public:
  using InputBlock = std::function<void(std::optional<OvCredentials>)>;  ///< nothing: cancelled

  /// Shows the credentials, and gives the user name the focus.
  /// @param credentials are copied; null stands for new ones.
  /// @param disallowSave takes the Save box away: they are not to be saved.
  /// @param onDoneBlock is called at most once, in place of any given before, when this page has forgotten all.
  void setupWithCredentials(const OvCredentials* credentials, bool disallowSave, InputBlock onDoneBlock);
  /// Whether the user cancels a connect that was asked for; otherwise it is a way back.
  void configureButtonTitlesForManualConnect(bool isManualConnect);
  /// Forgets all that was entered, and the callback, which is called with nothing if `performsBlock`.
  void resetContentWithBlockPerform(bool performsBlock);
  void showError(const std::string& text);
  void hideError();
  void setFocused();

  void setUserName(const std::string& text);
  void setPassword(SecretText text);
  void setDomain(const std::string& text);
  void setNeedToSave(bool needToSave);
  void onConnectClick();
  void onCancelClick();

  const std::string& userName() const { return _userName; }
  bool hasPassword() const { return !_password.empty(); }
  const std::string& domain() const { return _domain; }
  bool isDomainHidden() const { return _isDomainHidden; }
  bool needToSave() const { return _needToSave; }
  bool isSaveBoxHidden() const { return _isSaveBoxHidden; }
  bool isNextEnabled() const { return !_userName.empty(); }
  /// Next, or Retry while an error is shown.
  std::string nextTitle() const;
  std::string backTitle() const;
  const std::optional<std::string>& errorText() const { return _errorText; }  ///< nothing: none is shown

 private:
  void handleUpnUsingChanged(bool useUPN) override;
  void disallowSaveCredentials(bool disallowSave);
  OvCredentials scanCredentials() const;
  InputBlock forgetAll();

  OvCredentials _currentCredentials{};
  InputBlock _onInputBlock{};
  UPNFormatter _upnFormatter{*this};  // on the user-name field

  std::string _userName{};
  SecretText _password{};
  std::string _domain{};
  bool _isDomainHidden = false;
  bool _needToSave = false;
  bool _isSaveBoxHidden = false;
  bool _isManualConnect = false;
  std::optional<std::string> _errorText{};
};

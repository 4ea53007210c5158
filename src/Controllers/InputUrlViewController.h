#pragma once

#include <functional>
#include <optional>
#include <string>

#include "Controllers/Surface.h"

enum class InputUrlFocus { kUrl };

/// The page that asks for the address of a farm: a URL or an e-mail address, which nobody checks here.
class InputUrlViewController : public orvane::FocusableSurface<InputUrlFocus> {
 public:
  using DoneBlock = std::function<void(std::optional<std::string>)>;  ///< nothing: cancelled or skipped

  /// @param onDoneBlock is called at most once, in place of any given before, with the field's text as it is.
  void setupWithURL(const std::string& url, DoneBlock onDoneBlock);
  /// Whether the user has asked for this page, and cancels it; otherwise it is skipped.
  void configureButtonTitlesForManualAdd(bool isManualAdd);
  /// Clears the field and drops the callback.
  void resetContent();
  void showError(const std::string& text);
  void hideError();
  void setFocused();

  void setUrlToConnect(const std::string& text);
  void onNextClick();
  void onCancelClick();

  const std::string& urlToConnect() const { return _urlToConnect; }
  bool isNextEnabled() const { return !_urlToConnect.empty(); }
  /// Next, or Retry while an error is shown.
  std::string nextTitle() const;
  std::string cancelTitle() const;
  const std::optional<std::string>& errorText() const { return _errorText; }  ///< nothing: none is shown

 private:
  void finish(std::optional<std::string> url);

  std::string _urlToConnect{};
  bool _isManualAdd = false;
  std::optional<std::string> _errorText{};
  DoneBlock _onDoneBlock{};
};

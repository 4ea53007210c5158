#include "Controllers/InputUrlViewController.h"

#include <utility>

#include "OrvaneCommon/LocalizedText.h"

void InputUrlViewController::setupWithURL(const std::string& url, DoneBlock onDoneBlock) {
  _urlToConnect = url;
  _onDoneBlock = std::move(onDoneBlock);
  changed();
}

void InputUrlViewController::configureButtonTitlesForManualAdd(bool isManualAdd) {
  _isManualAdd = isManualAdd;
  changed();
}

void InputUrlViewController::resetContent() {
  _urlToConnect.clear();
  _onDoneBlock = nullptr;
  changed();
}

void InputUrlViewController::showError(const std::string& text) {
  _errorText = text;
  changed();
}

void InputUrlViewController::hideError() {
  _errorText.reset();
  changed();
}

void InputUrlViewController::setFocused() { focus(InputUrlFocus::kUrl); }

void InputUrlViewController::setUrlToConnect(const std::string& text) {
  _urlToConnect = text;
  changed();
}

void InputUrlViewController::onNextClick() {
  if (isNextEnabled()) finish(_urlToConnect);
}

void InputUrlViewController::onCancelClick() { finish(std::nullopt); }

void InputUrlViewController::finish(std::optional<std::string> url) {
  if (const DoneBlock done = std::exchange(_onDoneBlock, nullptr)) done(std::move(url));
}

std::string InputUrlViewController::nextTitle() const {
  return _errorText ? orvane::localizedText("UI.Buttons.Retry") : orvane::localizedText("UI.Buttons.Next");
}

std::string InputUrlViewController::cancelTitle() const {
  return _isManualAdd ? orvane::localizedText("UI.Buttons.Cancel") : orvane::localizedText("UI.Buttons.Skip");
}

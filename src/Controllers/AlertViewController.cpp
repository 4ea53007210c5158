#include "Controllers/AlertViewController.h"

#include <utility>

#include "OrvaneCommon/LocalizedText.h"

void AlertViewController::prepareAlertWithTitle(const std::string& title, const std::string& text,
                                                std::vector<std::string> buttonTitles,
                                                std::function<void(int)> onDoneBlock, bool asWindow) {
  _title = title;
  _isTitleHidden = asWindow;
  _text = text;
  _buttonTitles = std::move(buttonTitles);
  if (_buttonTitles.empty()) _buttonTitles.push_back(orvane::localizedText("UI.Buttons.OK"));
  _onDoneBlock = std::move(onDoneBlock);
  changed();
}

void AlertViewController::prepareAlertWithTitle(const std::string& title, const std::string& text,
                                                std::function<void()> onDone, bool asWindow) {
  std::function<void(int)> onDoneBlock;
  if (onDone) onDoneBlock = [onDone = std::move(onDone)](int) { onDone(); };
  prepareAlertWithTitle(title, text, {}, std::move(onDoneBlock), asWindow);
}

void AlertViewController::onButtonClick(int index) {
  if (index < 0 || static_cast<size_t>(index) >= _buttonTitles.size()) return;
  if (const auto onDone = std::exchange(_onDoneBlock, nullptr)) onDone(index);
}

void AlertViewController::resetContentWithBlockPerform(bool performs) {
  const auto onDone = std::exchange(_onDoneBlock, nullptr);
  if (_buttonTitles.size() > 1) _buttonTitles.resize(1);
  changed();
  if (performs && onDone) onDone(kNoButton);
}

#include "Controllers/ConfirmWindowController.h"

#include <utility>

void ConfirmWindowController::setupWindowWithConfirmationText(const std::string& text, Done onDoneBlock) {
  _text = text;
  _checkboxShowAgain = true;
  _onDoneBlock = std::move(onDoneBlock);
  changed();
}

void ConfirmWindowController::setShowAgainChecked(bool isChecked) {
  _checkboxShowAgain = isChecked;
  changed();
}

void ConfirmWindowController::resetContentWithBlockPerform(bool performs) {
  const Done onDone = std::exchange(_onDoneBlock, nullptr);
  changed();
  if (performs && onDone) onDone(false, _checkboxShowAgain);
}

void ConfirmWindowController::answer(bool isConfirmed) {
  if (const Done onDone = std::exchange(_onDoneBlock, nullptr)) onDone(isConfirmed, _checkboxShowAgain);
}

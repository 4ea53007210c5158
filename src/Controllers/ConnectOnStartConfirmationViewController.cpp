#include "Controllers/ConnectOnStartConfirmationViewController.h"

#include <utility>

#include "OrvaneCommon/LocalizedText.h"
#include "OrvaneCommon/TextFormat.h"

void ConnectOnStartConfirmationViewController::setupConfirmationViewWithConnectionName(const std::string& name,
                                                                                       bool isAlreadyAutolaunched,
                                                                                       DoneBlock onDoneBlock) {
  _confirmationText = orvane::formatText(
      orvane::localizedText("ConnectOnStartConfirmationViewController.ConfirmTextForConnection"), {name});
  _isAutolaunched = isAlreadyAutolaunched;
  _onDoneBlock = std::move(onDoneBlock);
  changed();
}

void ConnectOnStartConfirmationViewController::resetContent() {
  _confirmationText.clear();
  _isAutolaunched = false;
  _onDoneBlock = nullptr;
  changed();
}

void ConnectOnStartConfirmationViewController::setAutolaunched(bool isAutolaunched) {
  _isAutolaunched = isAutolaunched;
  changed();
}

void ConnectOnStartConfirmationViewController::onDoneClick() {
  if (const DoneBlock done = std::exchange(_onDoneBlock, nullptr)) done(_isAutolaunched);
}

#pragma once

#include <functional>
#include <string>

#include "Controllers/Surface.h"

/// Asks for a confirmation, and whether to ask the next time. Doesn't close itself: the callback does. Main thread
/// only.
class ConfirmWindowController : public orvane::Surface {
 public:
  using Done = std::function<void(bool isConfirmed, bool isBoxChecked)>;

  /// The box is checked at first: who is asked wanted to be.
  void setupWindowWithConfirmationText(const std::string& text, Done onDoneBlock);

  void onOkClick() { answer(true); }
  void onCancelClick() { answer(false); }
  void setShowAgainChecked(bool isChecked);

  /// Answers as Cancel does if that is wanted, and drops the callback.
  void resetContentWithBlockPerform(bool performs);

  const std::string& text() const { return _text; }
  bool isShowAgainChecked() const { return _checkboxShowAgain; }

 private:
  void answer(bool isConfirmed);

  Done _onDoneBlock{};
  std::string _text{};
  bool _checkboxShowAgain = true;
};

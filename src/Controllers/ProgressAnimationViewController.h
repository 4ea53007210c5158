#pragma once

#include <functional>
#include <string>

#include "Controllers/Surface.h"

/// Shows that something is under way, what, and a button that cancels it. Main thread only.
class ProgressAnimationViewController : public orvane::Surface {
 public:
  using Action = std::function<void()>;

  /// What is under way now takes the place of what was, whose action is dropped.
  void startProgressWithCancelBlock(Action onCancel);
  /// It is over; the action is dropped.
  void stopProgress();
  /// Runs the action, if there is one, once, then stops, unless the action started something new.
  void stopProgressAndPerformCancelBlock();
  void onCancelClick() { stopProgressAndPerformCancelBlock(); }

  void setDescription(const std::string& description);
  /// Empty from the start of each progress on.
  const std::string& description() const { return _description; }
  bool isAnimating() const { return _isAnimating; }

 private:
  Action _onCancelBlock{};
  std::string _description{};
  bool _isAnimating = false;
};

#include "Controllers/ProgressAnimationViewController.h"

#include <utility>

void ProgressAnimationViewController::startProgressWithCancelBlock(Action onCancel) {
  _onCancelBlock = std::move(onCancel);
  _description.clear();
  _isAnimating = true;
  changed();
}

void ProgressAnimationViewController::stopProgress() {
  _onCancelBlock = nullptr;
  _isAnimating = false;
  changed();
}

void ProgressAnimationViewController::stopProgressAndPerformCancelBlock() {
  if (const Action onCancel = std::exchange(_onCancelBlock, nullptr)) {
    _isAnimating = false;
    onCancel();
    if (_isAnimating) return;
  }
  stopProgress();
}

void ProgressAnimationViewController::setDescription(const std::string& description) {
  _description = description;
  changed();
}

#include "Controllers/ModalAlert.h"

#include <utility>

namespace orvane {

ModalAlert::ModalAlert(std::shared_ptr<WindowHost> windows, AuxiliaryWindow window)
    : windows_(std::move(windows)), window_(window) {}

void ModalAlert::show(const std::string& message, const std::string& title, WindowParent parent, Done onDone) {
  waiting_.push_back({message, title, parent, std::move(onDone)});
  if (isRunning_) return;
  isRunning_ = true;
  while (!waiting_.empty()) {
    const Message next = std::move(waiting_.front());
    waiting_.pop_front();
    run(next);
  }
  isRunning_ = false;
}

void ModalAlert::run(const Message& message) {
  int answer = AlertViewController::kNoButton;
  alert_.prepareAlertWithTitle(
      message.title, message.text, {},
      [&](int button) {
        answer = button;
        windows_->stopModal(window_);
      },
      true);
  windows_->runModal(window_, message.parent);
  alert_.resetContent();
  if (message.onDone) message.onDone(answer);
}

void ModalAlert::dismiss() {
  waiting_.clear();
  alert_.resetContentWithBlockPerform(true);
}

}  // namespace orvane

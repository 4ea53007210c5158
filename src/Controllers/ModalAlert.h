#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "Controllers/AlertViewController.h"
#include "Platform/WindowHost.h"

namespace orvane {

/// Alerts in one window, one after the other. Main thread only.
///
/// show() blocks in a modal run until the alert is answered. While one is up, another only queues behind it, so that no
/// message takes the place of one that nobody has read yet, and its show() returns at once.
class ModalAlert {
 public:
  /// The index that an alert gets that a takeover takes away.
  using Done = std::function<void(int button)>;

  /// @param window that draws alert().
  ModalAlert(std::shared_ptr<WindowHost> windows, AuxiliaryWindow window);

  void show(const std::string& message, const std::string& title, WindowParent parent, Done onDone);
  /// Ends the alert that is up, whose completion gets AlertViewController::kNoButton, and forgets those behind it.
  void dismiss();

  AlertViewController& alert() { return alert_; }

 private:
  struct Message {
    std::string text;
    std::string title;
    WindowParent parent;
    Done onDone;
  };
  void run(const Message& message);

  const std::shared_ptr<WindowHost> windows_;
  const AuxiliaryWindow window_;
  AlertViewController alert_{};
  std::deque<Message> waiting_{};
  bool isRunning_ = false;
};

}  // namespace orvane

#pragma once

namespace orvane {

/// The screens of the desktop. Any thread.
class Screens {
 public:
  struct Size {
    int width = 0;   ///< pixels
    int height = 0;  ///< pixels
  };

  virtual ~Screens() = default;

  /// What a titled window that fills the usable area of the first screen has room for inside; nothing without a screen.
  virtual Size largestWindowContent() const = 0;

  /// What of the main window's screen windows may cover; nothing without a screen.
  virtual Size visibleArea() const = 0;
};

}  // namespace orvane

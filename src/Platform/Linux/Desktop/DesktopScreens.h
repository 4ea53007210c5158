#pragma once

#include <memory>

#include "Platform/Screens.h"

class QWidget;

namespace orvane {

/// The toolkit's screens: a copy of their sizes that follows them while the main thread's loop runs. Made and let go on
/// the main thread, with a QApplication.
class DesktopScreens final : public Screens {
 public:
  DesktopScreens();
  ~DesktopScreens() override;
  DesktopScreens(const DesktopScreens&) = delete;
  DesktopScreens& operator=(const DesktopScreens&) = delete;

  /// The window whose screen visibleArea() tells of, and whose title bar largestWindowContent() leaves room for. Not
  /// owned, and may go at any time. Null or none: the first screen. Main thread only.
  void setMainWindow(QWidget* window);

  Size largestWindowContent() const override;
  Size visibleArea() const override;

 private:
  class Watch;

  const std::unique_ptr<Watch> watch_;
};

}  // namespace orvane

#pragma once

namespace orvane {

/// This process as the desktop sees it. Main thread only.
class ApplicationProcess {
 public:
  enum class ActivationPolicy : int {
    kRegular = 0,    ///< among the user's running programs, with a window
    kAccessory = 1,  ///< in the background, with a status item
  };

  virtual ~ApplicationProcess() = default;

  virtual void setActivationPolicy(ActivationPolicy policy) = 0;
  /// Lets the windows that are not hidden by themselves appear.
  virtual void unhide() = 0;
  /// Makes this the active program, whichever is now.
  virtual void activateIgnoringOtherApps() = 0;
  /// Has the main loop end, some time after this returned. Not to be vetoed.
  virtual void terminate() = 0;
};

}  // namespace orvane

#pragma once

namespace orvane {

/// Whether the desktop starts the program when the user logs in. Main thread only.
class Autostart {
 public:
  virtual ~Autostart() = default;
  virtual bool isEnabled() const = 0;
  /// @return whether it is so now; why not stands in the log.
  virtual bool setEnabled(bool isEnabled) = 0;
};

}  // namespace orvane

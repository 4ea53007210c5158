#pragma once

#include <memory>
#include <string>

namespace orvane {

/// An item of square size in the desktop's status area, there until it is let go. What its menu holds is the state of
/// the controller that owns the item. Main thread only.
class StatusItem {
 public:
  virtual ~StatusItem() = default;
  virtual void setToolTip(const std::string& text) = 0;
  /// Pictures are named as in the program's resources.
  virtual void setPicture(const std::string& name) = 0;
  /// The picture while the menu is open.
  virtual void setAlternatePicture(const std::string& name) = 0;
};

/// The desktop's status area, or whatever stands for it where the desktop has none. Main thread only.
class StatusArea {
 public:
  virtual ~StatusArea() = default;
  /// Never null.
  virtual std::unique_ptr<StatusItem> addItem() = 0;
};

}  // namespace orvane

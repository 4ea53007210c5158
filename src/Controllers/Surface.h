#pragma once

#include <functional>
#include <utility>

#include "Platform/Queues.h"

namespace orvane {

/// Base of what holds the state of a surface: tells the one view that draws it when that state changed. Main thread
/// only.
class Surface {
 public:
  virtual ~Surface() = default;
  Surface(const Surface&) = delete;
  Surface& operator=(const Surface&) = delete;

  /// Called after each change of what can be read here; it reads, and changes nothing. Empty: nobody draws.
  void setOnChange(Work onChange) { onChange_ = std::move(onChange); }

 protected:
  Surface() = default;
  void changed() const {
    if (onChange_) onChange_();
  }

 private:
  Work onChange_;
};

/// A surface with controls that it gives the keyboard focus to: `Control` is its enumeration of them.
template <class Control>
class FocusableSurface : public Surface {
 public:
  /// Called whenever a control is to take the focus, behind the change that lets it.
  void setOnFocus(std::function<void(Control)> onFocus) { onFocus_ = std::move(onFocus); }

 protected:
  void focus(Control control) const {
    if (onFocus_) onFocus_(control);
  }

 private:
  std::function<void(Control)> onFocus_;
};

}  // namespace orvane

#pragma once

#include <cstddef>
#include <vector>

#include "Controllers/ConnectionSetting.h"
#include "Model/OvDisplay.h"

/// The sizes that the connection editor offers for sessions: a hidden first item, perhaps one of the user's own, the
/// usual ones, and last the full screen.
class DisplayResolutions {
 public:
  DisplayResolutions();

  /// Offers the custom size of this display, and no other; none if it has none, or one that is offered anyway.
  void setCustomItemOf(const OvDisplay& display);

  std::vector<ConnectionPopUpItem> items() const;
  /// The full screen's, unless the display is to have a size that is offered.
  size_t itemFor(const OvDisplay& display) const;
  /// Stores the size of an item; that of the full screen is -1 by -1.
  void scanItem(size_t item, OvDisplay& display) const;

 private:
  struct Size {
    int width = 0;
    int height = 0;
    bool operator==(const Size&) const = default;
  };
  static const Size kHidden, kFullscreen;

  std::vector<Size> sizes_;
  bool hasCustomItem_ = false;
};

#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "Controllers/ConnectionSetting.h"

namespace orvane {

/// A pop-up button's items as the values that they stand for.
struct ValueChoice {
  std::span<const int> values;
  std::string (*titleOf)(int value);
  size_t itemForOthers;                    ///< shows a stored value that has no item
  std::pair<int, int> shownAs = {-1, -1};  ///< a stored value without an item, and the one in its place

  size_t itemFor(int stored) const;
  std::vector<ConnectionPopUpItem> items() const;
};

extern const ValueChoice kColorChoice;  ///< bits per pixel
extern const ValueChoice kSpeedChoice;  ///< kinds of network, as OvPerformance has them

/// The boxes that a kind of network sets, and how; none for that which is told from the network by itself.
std::vector<std::pair<ConnectionSetting, bool>> settingsForSpeed(int speed);

}  // namespace orvane

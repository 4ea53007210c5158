#include "Controllers/DisplayResolutions.h"

#include <algorithm>

#include "OrvaneCommon/PresentationTexts.h"

const DisplayResolutions::Size DisplayResolutions::kHidden{0, 0};
const DisplayResolutions::Size DisplayResolutions::kFullscreen{-1, -1};

DisplayResolutions::DisplayResolutions()
    : sizes_{kHidden,    {640, 480},  {720, 480},  {720, 576},  {800, 480},  {800, 600},
             {854, 480}, {1024, 768}, {1280, 720}, {1280, 768}, {1280, 800}, kFullscreen} {}

void DisplayResolutions::setCustomItemOf(const OvDisplay& display) {
  const auto place = sizes_.begin() + 1;
  if (hasCustomItem_) sizes_.erase(place);
  const Size custom{display.customWidth(), display.customHeight()};
  hasCustomItem_ = custom.width != 0 && custom.height != 0 && std::ranges::find(sizes_, custom) == sizes_.end();
  if (hasCustomItem_) sizes_.insert(sizes_.begin() + 1, custom);
}

std::vector<ConnectionPopUpItem> DisplayResolutions::items() const {
  std::vector<ConnectionPopUpItem> items;
  for (const Size& size : sizes_) {
    if (size == kHidden) {
      items.push_back({"", true});
    } else {
      items.push_back(
          {size == kFullscreen ? orvane::fullscreenTitle() : orvane::resolutionTitle(size.width, size.height)});
    }
  }
  return items;
}

size_t DisplayResolutions::itemFor(const OvDisplay& display) const {
  const size_t last = sizes_.size() - 1;
  if (display.fullscreen()) return last;
  const auto place = std::find(sizes_.begin() + 1, sizes_.end(), Size{display.width(), display.height()});
  return std::min(static_cast<size_t>(place - sizes_.begin()), last);
}

void DisplayResolutions::scanItem(size_t item, OvDisplay& display) const {
  const Size& size = sizes_.at(item);
  display.setFullscreen(size == kFullscreen);
  display.setWidth(size.width);
  display.setHeight(size.height);
}

#include "Controllers/ConnectionChoices.h"

#include <algorithm>

#include "OrvaneCommon/PresentationTexts.h"

namespace orvane {

namespace {

using Setting = ConnectionSetting;

constexpr int kColors[] = {8, 16, 24, 32};
constexpr int kSpeeds[] = {1, 2, 3, 4, 5, 6, 7};
constexpr int kAutomatic = 7;

// A box is on from this speed up.
struct SpeedRow {
  Setting setting;
  int lowestSpeed;
};

constexpr SpeedRow kSpeedRows[] = {
    {Setting::kBitmapCaching, 1},
    {Setting::kDesktopBackground, 5},
    {Setting::kWindowContent, 5},
    {Setting::kAnimation, 5},
    {Setting::kThemes, 2},
    {Setting::kFontSmoothing, 5},
    {Setting::kDesktopComposition, 2},
};

}  // namespace

const ValueChoice kColorChoice{kColors, colorTitle, 3, {15, 16}};
const ValueChoice kSpeedChoice{kSpeeds, connectionSpeedLabel, 5};

size_t ValueChoice::itemFor(int stored) const {
  const int shown = stored == shownAs.first ? shownAs.second : stored;
  const auto place = std::ranges::find(values, shown);
  return place == values.end() ? itemForOthers : static_cast<size_t>(place - values.begin());
}

std::vector<ConnectionPopUpItem> ValueChoice::items() const {
  std::vector<ConnectionPopUpItem> items;
  for (const int value : values) items.push_back({titleOf(value)});
  return items;
}

std::vector<std::pair<ConnectionSetting, bool>> settingsForSpeed(int speed) {
  std::vector<std::pair<ConnectionSetting, bool>> settings;
  if (speed == kAutomatic) return settings;
  for (const SpeedRow& row : kSpeedRows) settings.emplace_back(row.setting, speed >= row.lowestSpeed);
  return settings;
}

}  // namespace orvane

#include "OrvaneCommon/PresentationTexts.h"

#include <algorithm>
#include <iterator>

#include "OrvaneCommon/LocalizedText.h"
#include "OrvaneCommon/TextFormat.h"

namespace orvane {

namespace {

constexpr int kLocalNetwork = 6;

constexpr const char* kSpeedLabels[] = {
    localizedTextKey("Labels.ConnectionSpeed.Modem"),     localizedTextKey("Labels.ConnectionSpeed.LowSpeed"),
    localizedTextKey("Labels.ConnectionSpeed.Satellite"), localizedTextKey("Labels.ConnectionSpeed.HighSpeed"),
    localizedTextKey("Labels.ConnectionSpeed.WAN"),       localizedTextKey("Labels.ConnectionSpeed.LAN"),
    localizedTextKey("Labels.ConnectionSpeed.Custom"),
};

struct ColorTitle {
  int bitsPerPixel;
  const char* key;
};

constexpr ColorTitle kColorTitles[] = {
    {8, localizedTextKey("DisplayTabController.ColorTitle_256Colors")},
    {15, localizedTextKey("DisplayTabController.ColorTitle_15Bit")},
    {16, localizedTextKey("DisplayTabController.ColorTitle_16Bit")},
    {24, localizedTextKey("DisplayTabController.ColorTitle_24Bit")},
    {32, localizedTextKey("DisplayTabController.ColorTitle_32Bit")},
};

}  // namespace

std::string connectionSpeedLabel(int speed) {
  const bool known = speed >= 1 && speed <= static_cast<int>(std::size(kSpeedLabels));
  return localizedText(kSpeedLabels[(known ? speed : kLocalNetwork) - 1]);
}

std::string protocolName(int protocol) {
  return protocol == 1 ? localizedText("Location.ProtocolName.Https") : localizedText("Location.ProtocolName.Http");
}

std::string resolutionTitle(int width, int height) {
  return formatText(localizedText("DisplayTabController.ResolutionFormat"),
                    {std::to_string(width), std::to_string(height)});
}

std::string fullscreenTitle() { return localizedText("DisplayTabController.ResolutionFormat.Fullscreen"); }

std::string colorTitle(int bitsPerPixel) {
  const auto* const row = std::ranges::find(kColorTitles, bitsPerPixel, &ColorTitle::bitsPerPixel);
  return localizedText(row == std::end(kColorTitles) ? std::rbegin(kColorTitles)->key : row->key);
}

std::string yesOrNo(bool value) { return value ? localizedText("UI.Buttons.Yes") : localizedText("UI.Buttons.No"); }

std::string onePerLine(const std::vector<std::string>& items) {
  std::string lines;
  for (const std::string& item : items) lines += (lines.empty() ? "" : "\n") + item;
  return lines;
}

}  // namespace orvane

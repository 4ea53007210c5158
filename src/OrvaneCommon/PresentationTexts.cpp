#include "OrvaneCommon/PresentationTexts.h"

#include <iterator>

#include "OrvaneCommon/LocalizedText.h"

namespace orvane {

namespace {

constexpr int kLocalNetwork = 6;

constexpr const char* kSpeedLabels[] = {
    localizedTextKey("Labels.ConnectionSpeed.Modem"),     localizedTextKey("Labels.ConnectionSpeed.LowSpeed"),
    localizedTextKey("Labels.ConnectionSpeed.Satellite"), localizedTextKey("Labels.ConnectionSpeed.HighSpeed"),
    localizedTextKey("Labels.ConnectionSpeed.WAN"),       localizedTextKey("Labels.ConnectionSpeed.LAN"),
    localizedTextKey("Labels.ConnectionSpeed.Custom"),
};

}  // namespace

std::string connectionSpeedLabel(int speed) {
  const bool known = speed >= 1 && speed <= static_cast<int>(std::size(kSpeedLabels));
  return localizedText(kSpeedLabels[(known ? speed : kLocalNetwork) - 1]);
}

std::string protocolName(int protocol) {
  return protocol == 1 ? localizedText("Location.ProtocolName.Https") : localizedText("Location.ProtocolName.Http");
}

}  // namespace orvane

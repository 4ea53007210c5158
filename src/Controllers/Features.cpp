#include "Controllers/Features.h"

#include "OrvaneCommon/LocalizedText.h"
#include "OrvaneCommon/PresentationTexts.h"

namespace orvane {

namespace {

// In the order of Feature.
constexpr const char* kNames[] = {
    localizedTextKey("UI.Labels.None"),
    localizedTextKey("Features.Name.ClipboardRedirection"),
    localizedTextKey("Features.Name.DriveRedirection"),
    localizedTextKey("Features.Name.PrintersRedirection"),
    localizedTextKey("Features.Name.UniversalPrintersRedirection"),
    localizedTextKey("Features.Name.AudioRedirection"),
    localizedTextKey("Features.Name.MicrophoneRedirection"),
    localizedTextKey("Features.Name.SerialPortsRedirection"),
    localizedTextKey("Features.Name.GraphicsAcceleration"),
    localizedTextKey("Features.Name.FlashAcceleration"),
    localizedTextKey("Features.Name.WANAcceleration"),
    localizedTextKey("Features.Name.Autoreconnect"),
};

}  // namespace

std::vector<Feature> orNone(std::vector<Feature> features) {
  if (features.empty()) features.push_back(Feature::kNone);
  return features;
}

std::string featureNames(const std::vector<Feature>& features) {
  std::vector<std::string> names;
  for (const Feature feature : features) names.push_back(localizedText(kNames[static_cast<size_t>(feature)]));
  return onePerLine(names);
}

}  // namespace orvane

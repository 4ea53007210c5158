#include "Controllers/ManualConnectionInfoViewController.h"

#include <initializer_list>
#include <utility>

#include "Controllers/ConnectionTexts.h"
#include "Controllers/Features.h"
#include "OrvaneCommon/LocalizedText.h"
#include "OrvaneCommon/PresentationTexts.h"

using orvane::Feature;
using orvane::yesOrNo;

namespace {

constexpr int kNoSound = 1;

std::string namesOfThose(std::initializer_list<std::pair<Feature, bool>> features) {
  std::vector<Feature> used;
  for (const auto& [feature, isUsed] : features) {
    if (isUsed) used.push_back(feature);
  }
  return orvane::featureNames(orNone(std::move(used)));
}

std::string credentialsText(const OvCredentials& credentials) {
  return credentials.isEmpty() ? orvane::localizedText("UI.Labels.None") : orvane::qualifiedUserName(credentials);
}

std::string resolutionText(const OvDisplay& display) {
  return display.fullscreen() ? orvane::fullscreenTitle() : orvane::resolutionTitle(display.width(), display.height());
}

std::string redirectionsText(const OvResources& resources) {
  return namesOfThose({{Feature::kClipboardRedirection, resources.doRedirectClipboard()},
                       {Feature::kDriveRedirection, resources.doRedirectDiskDrives()},
                       {Feature::kPrintersRedirection, resources.doRedirectPrinters()},
                       {Feature::kSerialPortsRedirection, resources.doRedirectSerialPorts()}});
}

std::string experienceText(const OvFarm& farm) {
  const OvPerformance& performance = farm.performance();
  return namesOfThose({{Feature::kGraphicsAcceleration, performance.doUseGA()},
                       {Feature::kWanAcceleration, performance.doUseSurge()},
                       {Feature::kFlashAcceleration, performance.doFlashMMR()},
                       {Feature::kAutoreconnect, farm.doReconnect()}});
}

using Line = ManualConnectionInfoLine;

struct LineRow {
  Line line;
  std::string (*textOf)(const OvFarm&);
};

constexpr LineRow kLines[] = {
    {Line::kName, [](const OvFarm& farm) { return farm.name(); }},
    {Line::kType, [](const OvFarm& farm) { return orvane::connectionTypeName(farm); }},
    {Line::kCredentials, [](const OvFarm& farm) { return credentialsText(farm.credentials()); }},
    {Line::kDisallowSaveCredentials, [](const OvFarm& farm) { return yesOrNo(farm.disallowSaveCredentials()); }},
    {Line::kResolution, [](const OvFarm& farm) { return resolutionText(farm.display()); }},
    {Line::kColors, [](const OvFarm& farm) { return orvane::colorTitle(farm.display().color()); }},
    {Line::kSeamless, [](const OvFarm& farm) { return yesOrNo(farm.display().seamless()); }},
    {Line::kSound, [](const OvFarm& farm) { return yesOrNo(farm.resourses().sound() != kNoSound); }},
    {Line::kRedirections, [](const OvFarm& farm) { return redirectionsText(farm.resourses()); }},
    {Line::kSpeed,
     [](const OvFarm& farm) { return orvane::connectionSpeedLabel(farm.performance().connectionSpeed()); }},
    {Line::kExperience, experienceText},
    {Line::kAutoLaunch, [](const OvFarm& farm) { return yesOrNo(farm.doAutoLaunch()); }},
};

}  // namespace

void ManualConnectionInfoViewController::setupWithFarm(const OvFarm& farm) {
  for (const LineRow& row : kLines) _texts[static_cast<size_t>(row.line)] = row.textOf(farm);
  _locations.clear();
  for (const auto& location : farm.locations()) _locations.emplace_back(*location, location == farm.defaultLocation());
  changed();
}

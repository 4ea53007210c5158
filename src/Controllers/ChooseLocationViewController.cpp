#include "Controllers/ChooseLocationViewController.h"

#include <algorithm>
#include <utility>

#include "OrvaneCommon/LocalizedText.h"

namespace {

constexpr std::chrono::seconds kTimeOfRedTitle{1};

}  // namespace

ChooseLocationViewController::ChooseLocationViewController(std::shared_ptr<orvane::Timer> timer,
                                                           std::shared_ptr<orvane::MainQueue> mainQueue)
    : _changeTitleColorTimer(std::move(timer), std::move(mainQueue)) {}

void ChooseLocationViewController::setupWithFarm(const std::shared_ptr<OvFarm>& farm, ChooseBlock chooseBlock,
                                                 bool forNewConfiguration) {
  forgetAll();
  _onChooseBlock = std::move(chooseBlock);
  _forNewConfiguration = forNewConfiguration;
  _locations.assign(farm->locations().begin(), farm->locations().end());
  const auto preffered = std::ranges::find(_locations, farm->findLocationWithName(farm->prefferedLocationName()));
  if (preffered != _locations.end()) _selectedLocation = static_cast<size_t>(preffered - _locations.begin());
  changed();
}

void ChooseLocationViewController::resetContentWithBlockPerform(bool performsBlock) {
  const ChooseBlock choose = forgetAll();
  changed();
  if (performsBlock && choose) choose(nullptr);
}

void ChooseLocationViewController::selectLocation(size_t index) {
  if (index >= _locations.size()) return;
  _selectedLocation = index;
  changed();
}

void ChooseLocationViewController::onConnectClick() {
  if (!_onChooseBlock) return;
  if (!_selectedLocation) {
    _changeTitleColorTimer.startOnce(kTimeOfRedTitle, [this] { changed(); });
    changed();
    return;
  }
  const std::shared_ptr<OvLocation> chosen = _locations[*_selectedLocation];
  const ChooseBlock choose = forgetAll();
  changed();
  choose(chosen);
}

void ChooseLocationViewController::onCancelClick() { resetContentWithBlockPerform(true); }

ChooseLocationViewController::ChooseBlock ChooseLocationViewController::forgetAll() {
  _locations.clear();
  _selectedLocation.reset();
  _changeTitleColorTimer.invalidate();
  return std::exchange(_onChooseBlock, nullptr);
}

std::vector<std::string> ChooseLocationViewController::locationNames() const {
  std::vector<std::string> names;
  for (const auto& location : _locations) names.push_back(location->name());
  return names;
}

std::string ChooseLocationViewController::cancelTitle() const {
  return _forNewConfiguration ? orvane::localizedText("UI.Buttons.Skip") : orvane::localizedText("UI.Buttons.Cancel");
}

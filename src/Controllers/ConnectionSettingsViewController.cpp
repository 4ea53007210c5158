#include "Controllers/ConnectionSettingsViewController.h"

#include <utility>

#include "Controllers/ConnectionTexts.h"
#include "OrvaneCommon/LocalizedText.h"

using orvane::localizedText;

namespace {

constexpr orvane::AuxiliaryWindow kLocationSheet = orvane::AuxiliaryWindow::kEditLocation;
constexpr int kAdded = static_cast<int>(FarmChange::kAdded);
constexpr int kRemoved = static_cast<int>(FarmChange::kRemoved);
constexpr int kChanged = static_cast<int>(FarmChange::kChanged);
constexpr int kNothingChanged = ConnectionSettingsDelegate::kNothingChanged;

}  // namespace

struct ConnectionSettingsViewController::AskingPreference {
  bool (OrvaneSettings::*asks)() const;
  void (OrvaneSettings::*setAsks)(bool);
};

std::shared_ptr<ConnectionSettingsViewController> ConnectionSettingsViewController::create(
    OvFarmManager& farmManager, ConnectionSettingsDelegate& delegate, OrvaneSettings& settings,
    std::shared_ptr<orvane::MainQueue> mainQueue) {
  std::shared_ptr<ConnectionSettingsViewController> controller(
      new ConnectionSettingsViewController(delegate, settings, std::move(mainQueue)));
  farmManager.addFarmObserver(controller);
  return controller;
}

ConnectionSettingsViewController::ConnectionSettingsViewController(ConnectionSettingsDelegate& delegate,
                                                                   OrvaneSettings& settings,
                                                                   std::shared_ptr<orvane::MainQueue> mainQueue)
    : _delegate(delegate),
      _settings(settings),
      _mainQueue(std::move(mainQueue)),
      _managedInfo(std::make_shared<ManagedConnectionInfoViewController>(_mainQueue)) {}

void ConnectionSettingsViewController::setupSettingsForFarm(std::shared_ptr<OvFarm> farm, bool singleFarmMode,
                                                            bool inAdvancedMode, bool manualFarm) {
  _editedFarm = std::move(farm);
  _originalFarm = std::make_shared<OvFarm>(*_editedFarm);
  _manualFarmMode = manualFarm;
  _singleFarmMode = singleFarmMode;
  _advancedSettingsMode = inAdvancedMode;
  _isConfigInfoShown = false;
  showSettings();
}

void ConnectionSettingsViewController::setupSettingsForManualFarm() {
  setupSettingsForFarm(std::make_shared<OvFarm>(), false, true, true);
}

void ConnectionSettingsViewController::toggleAdvancedSettingsClick() {
  _advancedSettingsMode = !_advancedSettingsMode;
  changed();
}

// The description.

void ConnectionSettingsViewController::setUserDescription(const std::string& text) {
  _editedDescription.reset();
  _userDescription = text;
}

void ConnectionSettingsViewController::setEditedDescription(const std::string& text) {
  if (_editedDescription) _editedDescription = text;
  changed();
}

void ConnectionSettingsViewController::editConnectionDescriptionClick() {
  if (_editedDescription) {
    finishDescription();
    changed();
  } else {
    _editedDescription = _userDescription;
    changed();
    focus(ConnectionSettingsFocus::kDescription);
  }
}

void ConnectionSettingsViewController::finishDescription() {
  if (_editedDescription) setUserDescription(std::string(*_editedDescription));
}

std::string ConnectionSettingsViewController::editDescriptionButtonTitle() const {
  return isEditingDescription() ? localizedText("UI.Buttons.Done") : localizedText("UI.Buttons.Edit");
}

// The locations.

bool ConnectionSettingsViewController::isLocationListEditable() const {
  return _editedFarm && (_manualFarmMode || !_editedFarm->serverCreated());
}

bool ConnectionSettingsViewController::isLocationsTableShown() const {
  return isLocationListEditable() || _locations.size() != 1;
}

void ConnectionSettingsViewController::selectLocation(std::optional<size_t> row) {
  _selectedLocation = row && *row < _locations.size() ? row : std::nullopt;
  changed();
}

void ConnectionSettingsViewController::onEditLocationListClick(int segment) {
  if (!isLocationListEditable()) return;
  if (segment == kAddLocation) {
    openLocation(OvLocation::location(), false, EditLocationMode::kNew);
  } else if (segment == kRemoveLocation && _selectedLocation) {
    removeSelectedLocation();
  } else if (segment == kEditLocation && _selectedLocation) {
    const auto& location = _locations[*_selectedLocation];
    const auto defaultLocation = _editedFarm->defaultLocation();
    openLocation(location, defaultLocation && *defaultLocation == *location, EditLocationMode::kEdit);
  }
}

void ConnectionSettingsViewController::openLocation(std::shared_ptr<OvLocation> location, bool isDefault,
                                                    EditLocationMode mode) {
  _farmOfLocationSheet = _editedFarm;
  _wasDefaultLocation = isDefault;
  _editLocation.setupWithLocation(std::move(location), isDefault, mode);
  _delegate.connectionSettingsWantsShowSheetWindow(kLocationSheet);
}

void ConnectionSettingsViewController::removeSelectedLocation() {
  const auto row = static_cast<std::ptrdiff_t>(*std::exchange(_selectedLocation, std::nullopt));
  if (_editedFarm->defaultLocationIndex() == row) _editedFarm->setDefaultLocation(nullptr);
  _locations.erase(_locations.begin() + row);
  _isRemoveLocationEnabled = !_locations.empty();
  scanSettingsAndSave();
}

void ConnectionSettingsViewController::editLocationDidFinishEditingLocation(const std::shared_ptr<OvLocation>& location,
                                                                            bool shouldMakeDefault,
                                                                            EditLocationMode mode) {
  const bool isStillEdited = _editedFarm && _farmOfLocationSheet.lock() == _editedFarm;
  if (location && isStillEdited) {
    if (mode == EditLocationMode::kNew) _locations.push_back(location);
    _editedFarm->setLocations(_locations);  // among which the default one is looked up
    if (shouldMakeDefault) {
      _editedFarm->setDefaultLocation(location.get());
    } else if (_wasDefaultLocation) {
      _editedFarm->setDefaultLocation(nullptr);
    }
  }
  if (isStillEdited) _isRemoveLocationEnabled = !_locations.empty();
  _delegate.connectionSettingsWantsHideSheetWindow(kLocationSheet);
  scanSettingsAndSave();
}

// The pop-over.

std::string ConnectionSettingsViewController::configInfoButtonTitle() const {
  if (isConfigInfoManaged() && !_editedFarm->configTimestamp().empty()) return _editedFarm->configTimestamp();
  return localizedText("ConnectionSettingsViewController.Labels.Details");
}

bool ConnectionSettingsViewController::isConfigInfoManaged() const {
  return _editedFarm && _editedFarm->serverCreated();
}

void ConnectionSettingsViewController::onConfigInfoClick() {
  if (!_editedFarm) return;
  _isConfigInfoShown = !_isConfigInfoShown;
  if (_isConfigInfoShown && isConfigInfoManaged()) {
    _managedInfo->setupWithFarm(*_editedFarm);
  } else if (_isConfigInfoShown) {
    _manualInfo.setupWithFarm(*_editedFarm);
  }
  changed();
}

void ConnectionSettingsViewController::configInfoDidClose() {
  _isConfigInfoShown = false;
  changed();
}

// The exits.

void ConnectionSettingsViewController::onUndoButtonClick() {
  if (!_editedFarm) return;
  takeLatePassword();
  _editedFarm->setConfigurationEqualToFarm(_originalFarm.get());
  showSettings();
  _delegate.connectionSettingsWantsSaveSetttings();
}

void ConnectionSettingsViewController::onBackButtonClick() {
  finishDescription();
  scanSettings();
  settingsDidFinishEditingCurrentFarmWithFarmState(kChanged);
}

void ConnectionSettingsViewController::onAddManualConnectionClick() {
  if (!isAddEnabled()) return;
  finishDescription();
  scanSettings();
  settingsDidFinishEditingCurrentFarmWithFarmState(kAdded);
}

void ConnectionSettingsViewController::onCancelManualConnectionClick() {
  settingsDidFinishEditingCurrentFarmWithFarmState(kNothingChanged);
}

void ConnectionSettingsViewController::settingsDidFinishEditingCurrentFarmWithFarmState(int farmState) {
  if (!_editedFarm) return;
  const std::shared_ptr<OvFarm> farm = _editedFarm;
  _delegate.connectionSettingsDidFinishEditing(farm, farmState);
  _editedFarm.reset();
  _originalFarm.reset();
  _isConfigInfoShown = false;
  changed();
}

void ConnectionSettingsViewController::clearCredentialsClick() {
  static constexpr AskingPreference kAsking{&OrvaneSettings::askBeforeClearCredentials,
                                            &OrvaneSettings::setAskBeforeClearCredentials};
  doAfterAsking(kAsking, &ConnectionSettingsViewController::clearCredentials, [this](auto block) {
    _delegate.connectionSettingsPromptClearingCredentialsForFarm(_editedFarm, std::move(block));
  });
}

void ConnectionSettingsViewController::clearCredentials() {
  _editedFarm->credentials().clear();
  showCredentialsForFarm(*_editedFarm);
  updateUndoButtonState();
  changed();
  _delegate.connectionSettingsWantsSaveSetttings();
}

void ConnectionSettingsViewController::onDeleteConnectionClick() {
  static constexpr AskingPreference kAsking{&OrvaneSettings::askBeforeDeleteConnection,
                                            &OrvaneSettings::setAskBeforeDeleteConnection};
  if (_manualFarmMode) return onCancelManualConnectionClick();
  doAfterAsking(kAsking, &ConnectionSettingsViewController::deleteConnection, [this](auto block) {
    _delegate.connectionSettingsPromptConfirmationToDeleteFarmWithBlock(std::move(block));
  });
}

void ConnectionSettingsViewController::deleteConnection() {
  settingsDidFinishEditingCurrentFarmWithFarmState(kRemoved);
}

void ConnectionSettingsViewController::doAfterAsking(
    const AskingPreference& preference, void (ConnectionSettingsViewController::*action)(),
    const std::function<void(ConnectionSettingsDelegate::ConfirmationBlock)>& prompt) {
  if (!_editedFarm) return;
  if (!(_settings.*preference.asks)()) return (this->*action)();
  prompt([weak = weak_from_this(), preference, action, farm = _editedFarm](bool isConfirmed, bool askAgain) {
    const auto self = weak.lock();
    if (!self) return;
    if (askAgain != (self->_settings.*preference.asks)()) {
      (self->_settings.*preference.setAsks)(askAgain);
      self->_settings.save();
    }
    if (isConfirmed && self->_editedFarm == farm) (self.get()->*action)();
  });
}

// What happens to the farm elsewhere.

void ConnectionSettingsViewController::farmStateDidChange(FarmChange state, const std::shared_ptr<OvFarm>& farm) {
  _mainQueue->post([weak = weak_from_this(), state, farm] {
    if (const auto self = weak.lock()) self->handleFarmState(state, farm);
  });
}

void ConnectionSettingsViewController::handleFarmState(FarmChange state, const std::shared_ptr<OvFarm>& farm) {
  const bool isOfEditedFarm = state == FarmChange::kAllRemoved ? !_manualFarmMode : farm == _editedFarm;
  if (!_editedFarm || !isOfEditedFarm) return;
  if (state == FarmChange::kChanged) {
    _editedFarm = farm;
    _originalFarm = std::make_shared<OvFarm>(*farm);
    showSettings();
  } else if (state == FarmChange::kRemoved || state == FarmChange::kAllRemoved) {
    settingsDidFinishEditingCurrentFarmWithFarmState(kNothingChanged);
  }
}

#include <algorithm>
#include <iterator>
#include <utility>

#include "Controllers/ConnectionChoices.h"
#include "Controllers/ConnectionSettingsViewController.h"
#include "Controllers/ConnectionTexts.h"
#include "OrvaneCommon/LocalizedText.h"
#include "OrvaneCommon/OvUPaths.h"

using Setting = ConnectionSetting;

namespace {

constexpr int kSound = 0;
constexpr int kNoSound = 1;

// A box and what of the farm it stands for.
struct BoxRow {
  Setting setting;
  bool (*show)(const OvFarm&);
  void (*scan)(OvFarm&, bool isOn);
};

#define ORVANE_BOX(setting, part, name, Name)                              \
  {                                                                        \
    Setting::setting, [](const OvFarm& farm) { return farm part.name(); }, \
        [](OvFarm& farm, bool isOn) { farm part.set##Name(isOn); }         \
  }

constexpr BoxRow kBoxes[] = {
    ORVANE_BOX(kConnectOnStart, , doAutoLaunch, DoAutoLaunch),
    ORVANE_BOX(kMultipleMonitors, .display(), spanMonitors, SpanMonitors),
    {Setting::kPlayAudio, [](const OvFarm& farm) { return farm.resourses().sound() != kNoSound; },
     [](OvFarm& farm, bool isOn) { farm.resourses().setSound(isOn ? kSound : kNoSound); }},
    ORVANE_BOX(kRedirectClipboard, .resourses(), doRedirectClipboard, DoRedirectClipboard),
    ORVANE_BOX(kRedirectDrives, .resourses(), doRedirectDiskDrives, DoRedirectDiskDrives),
    ORVANE_BOX(kSeamless, .display(), seamless, Seamless),
    ORVANE_BOX(kPrinters, .resourses(), doRedirectPrinters, DoRedirectPrinters),
    ORVANE_BOX(kSerialPorts, .resourses(), doRedirectSerialPorts, DoRedirectSerialPorts),
    ORVANE_BOX(kDesktopBackground, .performance(), doShowDesktopBackground, DoShowDesktopBackground),
    ORVANE_BOX(kFontSmoothing, .performance(), doUseFontSmoothing, DoUseFontSmoothing),
    ORVANE_BOX(kDesktopComposition, .performance(), doUseDesktopComposition, DoUseDesktopComposition),
    ORVANE_BOX(kWindowContent, .performance(), doShowWindowContent, DoShowWindowContent),
    ORVANE_BOX(kAnimation, .performance(), doUseAnimation, DoUseAnimation),
    ORVANE_BOX(kThemes, .performance(), doUseThemes, DoUseThemes),
    ORVANE_BOX(kBitmapCaching, .performance(), doUseBitmapCaching, DoUseBitmapCaching),
    ORVANE_BOX(kGraphicsAcceleration, .performance(), doUseGA, DoUseGA),
    ORVANE_BOX(kSurge, .performance(), doUseSurge, DoUseSurge),
    ORVANE_BOX(kFlashRedirection, .performance(), doFlashMMR, DoFlashMMR),
    ORVANE_BOX(kAnonymousLogin, , anonymousLogin, AnonymousLogin),
    ORVANE_BOX(kSaveCredentials, .credentials(), needToSave, NeedToSave),
};

#undef ORVANE_BOX

static_assert(std::size(kBoxes) == kConnectionSettings);

const orvane::ValueChoice& choiceOf(ConnectionPopUp popUp) {
  return popUp == ConnectionPopUp::kColors ? orvane::kColorChoice : orvane::kSpeedChoice;
}

}  // namespace

// From the farm.

void ConnectionSettingsViewController::showSettings() {
  OvFarm& farm = *_editedFarm;
  _title =
      _manualFarmMode ? orvane::localizedText("ConnectionSettingsViewController.Labels.AddConnection") : farm.name();
  for (const BoxRow& row : kBoxes) box(row.setting) = row.show(farm);
  showCredentialsForFarm(farm);
  _resolutions.setCustomItemOf(farm.display());
  itemOf(ConnectionPopUp::kResolution) = _resolutions.itemFor(farm.display());
  itemOf(ConnectionPopUp::kColors) = orvane::kColorChoice.itemFor(farm.display().color());
  itemOf(ConnectionPopUp::kSpeed) = orvane::kSpeedChoice.itemFor(farm.performance().connectionSpeed());
  _isFlashNoticeShown = !OvU_IsFlashPlayerInstalled();
  setUserDescription(farm.userDescription());
  _locations = farm.locations();
  _selectedLocation.reset();
  _isRemoveLocationEnabled = _locations.size() > 1;
  updateUndoButtonState();
  changed();
}

void ConnectionSettingsViewController::showCredentialsForFarm(const OvFarm& farm) {
  box(Setting::kAnonymousLogin) = farm.anonymousLogin();
  box(Setting::kSaveCredentials) = farm.credentials().needToSave();
  const bool areSaved = !farm.anonymousLogin() && farm.credentials().needToSave();
  _credentials.show(areSaved ? &farm.credentials() : nullptr);
}

// Into the farm.

void ConnectionSettingsViewController::scanSettings() {
  if (!_editedFarm) return;
  OvFarm& farm = *_editedFarm;
  takeLatePassword();
  if (!_manualFarmMode) farm.setName(_title);
  for (const BoxRow& row : kBoxes) {
    if (isShown(row.setting)) row.scan(farm, isChecked(row.setting));
  }
  _resolutions.scanItem(selectedItem(ConnectionPopUp::kResolution), farm.display());
  farm.display().setColor(orvane::kColorChoice.values[selectedItem(ConnectionPopUp::kColors)]);
  farm.performance().setConnectionSpeed(orvane::kSpeedChoice.values[selectedItem(ConnectionPopUp::kSpeed)]);
  farm.setUserDescription(_userDescription);
  farm.setLocations(_locations);
  scanCredentialsForFarm(farm);
  if (!farm.credentials().isEqualToCredentials(_originalFarm->credentials())) {
    farm.credentials().setCredentialsAreValid(true);
  }
  updateUndoButtonState();
  changed();
}

void ConnectionSettingsViewController::scanCredentialsForFarm(OvFarm& farm) {
  if (isChecked(Setting::kSaveCredentials) && !isChecked(Setting::kAnonymousLogin)) {
    _credentials.scan(farm.credentials());
  } else {
    farm.credentials().clear();
  }
}

// A password that the secret store gave only now is no change of the user's: Undo mustn't take it away, nor the next
// scan.
void ConnectionSettingsViewController::takeLatePassword() {
  const OvCredentials& credentials = std::as_const(*_editedFarm).credentials();
  if (!credentials.needToSave() || _editedFarm->anonymousLogin()) return;
  if (!_credentials.takeLatePassword(credentials)) return;
  OvCredentials& original = _originalFarm->credentials();
  if (original.password().empty()) original.setPassword(credentials.password());
}

void ConnectionSettingsViewController::updateUndoButtonState() {
  _isUndoEnabled = !_editedFarm->isEqualToFarm(*_originalFarm);
}

void ConnectionSettingsViewController::scanSettingsAndSave() {
  if (!_editedFarm) return;
  scanSettings();
  _delegate.connectionSettingsWantsSaveSetttings();
}

// What the user changes.

void ConnectionSettingsViewController::setTitle(const std::string& text) {
  if (!isTitleEditable()) return;
  _title = text;
  scanSettingsAndSave();
}

void ConnectionSettingsViewController::setUserName(const std::string& text) {
  _credentials.setUserName(text);
  scanSettingsAndSave();
}

void ConnectionSettingsViewController::setPassword(SecretText text) {
  _credentials.setPassword(std::move(text));
  scanSettingsAndSave();
}

void ConnectionSettingsViewController::setDomain(const std::string& text) {
  _credentials.setDomain(text);
  scanSettingsAndSave();
}

void ConnectionSettingsViewController::setChecked(ConnectionSetting setting, bool isChecked) {
  box(setting) = isChecked;
  scanSettingsAndSave();
}

void ConnectionSettingsViewController::handlePopUpButtonDidChangeSelection(ConnectionPopUp popUp, size_t item) {
  const auto offered = items(popUp);
  if (item >= offered.size() || offered[item].isHidden) return;
  itemOf(popUp) = item;
  if (popUp == ConnectionPopUp::kSpeed) handleSpeedChanged();
  scanSettingsAndSave();
}

void ConnectionSettingsViewController::handleSpeedChanged() {
  const int speed = orvane::kSpeedChoice.values[selectedItem(ConnectionPopUp::kSpeed)];
  for (const auto& [setting, isOn] : orvane::settingsForSpeed(speed)) box(setting) = isOn;
}

// What is shown.

bool ConnectionSettingsViewController::isShown(ConnectionSetting setting) const {
  return setting != Setting::kConnectOnStart || !_singleFarmMode;
}

bool ConnectionSettingsViewController::isEnabled(ConnectionSetting setting) const {
  return setting != Setting::kSaveCredentials || !isChecked(Setting::kAnonymousLogin);
}

bool ConnectionSettingsViewController::isUserNameEnabled() const {
  return isChecked(Setting::kSaveCredentials) && !isChecked(Setting::kAnonymousLogin);
}

bool ConnectionSettingsViewController::isDomainEnabled() const {
  return isUserNameEnabled() && _credentials.isDomainUsable();
}

std::optional<std::string> ConnectionSettingsViewController::credentialsPreview() const {
  if (!_editedFarm) return std::nullopt;
  const OvCredentials& credentials = _editedFarm->credentials();
  if (credentials.isEmpty() || !credentials.needToSave()) return std::nullopt;
  return orvane::qualifiedUserName(credentials);
}

std::vector<ConnectionPopUpItem> ConnectionSettingsViewController::items(ConnectionPopUp popUp) const {
  return popUp == ConnectionPopUp::kResolution ? _resolutions.items() : choiceOf(popUp).items();
}

std::string ConnectionSettingsViewController::selectedTitle(ConnectionPopUp popUp) const {
  return items(popUp)[selectedItem(popUp)].title;
}

#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Controllers/ConnectionSetting.h"
#include "Controllers/ConnectionSettingsDelegate.h"
#include "Controllers/CredentialsFields.h"
#include "Controllers/DisplayResolutions.h"
#include "Controllers/EditLocationWindowController.h"
#include "Controllers/ManagedConnectionInfoViewController.h"
#include "Controllers/ManualConnectionInfoViewController.h"
#include "Controllers/Surface.h"
#include "Model/OvFarmManager.h"
#include "OrvaneCommon/OrvaneSettings.h"
#include "Platform/Queues.h"

enum class ConnectionSettingsFocus { kDescription };

/// The editor of one connection. It has no Save: every change goes into the farm and its store at once, and Undo goes
/// back to what the farm was when editing began. Only a new manual connection is outside the store until it is added.
///
/// Closed while there is no edited farm: what the user does then changes nothing. Nothing that is entered is checked.
class ConnectionSettingsViewController : public orvane::FocusableSurface<ConnectionSettingsFocus>,
                                         public OvFarmManagerObserver,
                                         private EditLocationDelegate,
                                         public std::enable_shared_from_this<ConnectionSettingsViewController> {
 public:
  /// The segments of the control below the list of locations.
  enum LocationListSegment { kAddLocation = 0, kRemoveLocation = 1, kEditLocation = 2 };

  /// A closed editor that observes the farms.
  /// @param delegate outlives it, and so do `settings`.
  static std::shared_ptr<ConnectionSettingsViewController> create(OvFarmManager& farmManager,
                                                                  ConnectionSettingsDelegate& delegate,
                                                                  OrvaneSettings& settings,
                                                                  std::shared_ptr<orvane::MainQueue> mainQueue);

  /// Begins to edit a farm, which is not null, in place of any edited before.
  /// @param singleFarmMode  the farm is the store's only one, which is connected on start whatever it says.
  /// @param manualFarm  it is a new one, that is not in the store.
  void setupSettingsForFarm(std::shared_ptr<OvFarm> farm, bool singleFarmMode, bool inAdvancedMode, bool manualFarm);
  /// Begins to edit a new manual connection.
  void setupSettingsForManualFarm();

  const std::shared_ptr<OvFarm>& editedFarm() const { return _editedFarm; }      ///< null: closed
  const std::shared_ptr<OvFarm>& originalFarm() const { return _originalFarm; }  ///< what Undo goes back to

  // What the user does.
  void setTitle(const std::string& text);
  void setUserName(const std::string& text);
  void setPassword(SecretText text);
  void setDomain(const std::string& text);
  void setChecked(ConnectionSetting setting, bool isChecked);
  void handlePopUpButtonDidChangeSelection(ConnectionPopUp popUp, size_t item);
  void setEditedDescription(const std::string& text);
  void editConnectionDescriptionClick();
  void selectLocation(std::optional<size_t> row);
  void onEditLocationListClick(int segment);
  void toggleAdvancedSettingsClick();
  void onConfigInfoClick();
  /// The desktop closed the pop-over, as it does when the user clicks elsewhere.
  void configInfoDidClose();
  void clearCredentialsClick();
  void onUndoButtonClick();
  void onBackButtonClick();
  void onAddManualConnectionClick();
  void onCancelManualConnectionClick();
  void onDeleteConnectionClick();

  // What is shown.
  const std::string& title() const { return _title; }
  bool isTitleEditable() const { return !_manualFarmMode; }
  bool isManualFarmMode() const { return _manualFarmMode; }
  bool isBackButtonShown() const { return !_manualFarmMode; }
  bool isUndoButtonShown() const { return !_manualFarmMode; }
  bool isUndoEnabled() const { return _isUndoEnabled; }
  bool isAddButtonShown() const { return _manualFarmMode; }
  bool isCancelButtonShown() const { return _manualFarmMode; }
  bool isAddEnabled() const { return !_locations.empty(); }
  bool isAdvancedSectionShown() const { return _advancedSettingsMode; }

  const std::string& userName() const { return _credentials.userName(); }
  bool hasPassword() const { return _credentials.hasPassword(); }
  const std::string& domain() const { return _credentials.domain(); }
  bool isUserNameEnabled() const;
  bool isPasswordEnabled() const { return isUserNameEnabled(); }
  bool isDomainEnabled() const;
  /// As whom the farm is used without asking; nothing: none is shown.
  std::optional<std::string> credentialsPreview() const;

  bool isChecked(ConnectionSetting setting) const { return _boxes[static_cast<size_t>(setting)]; }
  bool isEnabled(ConnectionSetting setting) const;
  bool isShown(ConnectionSetting setting) const;
  /// Whether the user is to be told that Flash content needs a player that isn't installed.
  bool isFlashNoticeShown() const { return _isFlashNoticeShown; }

  std::vector<ConnectionPopUpItem> items(ConnectionPopUp popUp) const;
  size_t selectedItem(ConnectionPopUp popUp) const { return _selectedItems[static_cast<size_t>(popUp)]; }
  std::string selectedTitle(ConnectionPopUp popUp) const;

  const std::string& userDescription() const { return _userDescription; }
  bool isEditingDescription() const { return _editedDescription.has_value(); }
  std::string editedDescription() const { return _editedDescription.value_or(""); }
  bool isAddDescriptionButtonShown() const { return !isEditingDescription() && _userDescription.empty(); }
  bool isEditDescriptionButtonShown() const { return !isAddDescriptionButtonShown(); }
  std::string editDescriptionButtonTitle() const;

  bool isLocationsTableShown() const;
  /// Whether locations may be added, removed and edited.
  bool isLocationListEditable() const;
  const OvLocationList& locations() const { return _locations; }
  std::optional<size_t> selectedLocation() const { return _selectedLocation; }
  bool isRemoveLocationEnabled() const { return _isRemoveLocationEnabled; }
  EditLocationWindowController& editLocation() { return _editLocation; }

  std::string configInfoButtonTitle() const;
  bool isConfigInfoShown() const { return _isConfigInfoShown; }
  /// Whether the pop-over shows managedInfo(); otherwise it shows manualInfo().
  bool isConfigInfoManaged() const;
  ManagedConnectionInfoViewController& managedInfo() { return *_managedInfo; }
  ManualConnectionInfoViewController& manualInfo() { return _manualInfo; }

  void farmStateDidChange(FarmChange state, const std::shared_ptr<OvFarm>& farm) override;

 private:
  ConnectionSettingsViewController(ConnectionSettingsDelegate& delegate, OrvaneSettings& settings,
                                   std::shared_ptr<orvane::MainQueue> mainQueue);
  void editLocationDidFinishEditingLocation(const std::shared_ptr<OvLocation>& location, bool shouldMakeDefault,
                                            EditLocationMode mode) override;
  void handleFarmState(FarmChange state, const std::shared_ptr<OvFarm>& farm);
  void finishDescription();
  void settingsDidFinishEditingCurrentFarmWithFarmState(int farmState);
  void clearCredentials();
  void deleteConnection();
  // Does the action at once, or if the preference wants it when `prompt` has the user's consent, if the farm is still
  // being edited then.
  struct AskingPreference;
  void doAfterAsking(const AskingPreference& preference, void (ConnectionSettingsViewController::*action)(),
                     const std::function<void(ConnectionSettingsDelegate::ConfirmationBlock)>& prompt);
  void setUserDescription(const std::string& text);
  void removeSelectedLocation();
  void openLocation(std::shared_ptr<OvLocation> location, bool isDefault, EditLocationMode mode);

  // Between the farm and what is shown: ConnectionSettingsScan.cpp.
  void showSettings();
  void showCredentialsForFarm(const OvFarm& farm);
  void scanSettings();
  void scanSettingsAndSave();
  void scanCredentialsForFarm(OvFarm& farm);
  void takeLatePassword();
  void updateUndoButtonState();
  void handleSpeedChanged();
  size_t& itemOf(ConnectionPopUp popUp) { return _selectedItems[static_cast<size_t>(popUp)]; }
  bool& box(ConnectionSetting setting) { return _boxes[static_cast<size_t>(setting)]; }

  ConnectionSettingsDelegate& _delegate;
  OrvaneSettings& _settings;
  const std::shared_ptr<orvane::MainQueue> _mainQueue;
  std::shared_ptr<OvFarm> _editedFarm{};
  std::shared_ptr<OvFarm> _originalFarm{};
  bool _manualFarmMode = false;
  bool _advancedSettingsMode = false;
  bool _singleFarmMode = false;
  bool _isUndoEnabled = false;

  std::string _title{};
  CredentialsFields _credentials{};
  std::array<bool, kConnectionSettings> _boxes{};
  std::array<size_t, kConnectionPopUps> _selectedItems{};
  DisplayResolutions _resolutions{};
  bool _isFlashNoticeShown = false;
  std::string _userDescription{};
  std::optional<std::string> _editedDescription{};  // while it is edited

  OvLocationList _locations{};  // the working copy of the farm's
  std::optional<size_t> _selectedLocation{};
  bool _isRemoveLocationEnabled = false;
  EditLocationWindowController _editLocation{*this};
  std::weak_ptr<OvFarm> _farmOfLocationSheet{};  // which may be edited no more when the sheet is done
  bool _wasDefaultLocation = false;

  bool _isConfigInfoShown = false;
  const std::shared_ptr<ManagedConnectionInfoViewController> _managedInfo;
  ManualConnectionInfoViewController _manualInfo{};
};

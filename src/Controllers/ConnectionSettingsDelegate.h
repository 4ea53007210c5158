#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "Model/OvCredentials.h"
#include "Model/OvFarm.h"
#include "Model/OvFarmManagerObserver.h"
#include "Platform/WindowHost.h"

/// What the connection editor asks of the program around it. Main thread only.
class ConnectionSettingsDelegate {
 public:
  /// @param askAgain the box of the question, whatever the answer.
  using ConfirmationBlock = std::function<void(bool isConfirmed, bool askAgain)>;
  using CredentialsBlock = std::function<void(std::optional<OvCredentials>)>;  ///< nothing: cancelled

  /// The farm state of an edit that leaves nothing to do; the others are values of FarmChange.
  static constexpr int kNothingChanged = -1;

  virtual ~ConnectionSettingsDelegate() = default;

  /// The editor is done with the farm and is to be hidden.
  /// @param farmState kNothingChanged, or that of the FarmChange to bring about: added, removed, changed.
  virtual void connectionSettingsDidFinishEditing(const std::shared_ptr<OvFarm>& farm, int farmState) = 0;

  /// The prompts return at once; a block is called at most once, later or inside the call.
  virtual void connectionSettingsPromptClearingCredentialsForFarm(const std::shared_ptr<OvFarm>& farm,
                                                                  ConfirmationBlock block) = 0;
  virtual void connectionSettingsPromptCredentialsWithOldCredentials(const OvCredentials& oldCredentials,
                                                                     bool disallowSave,
                                                                     CredentialsBlock onDoneBlock) = 0;
  virtual void connectionSettingsPromptConfirmationToDeleteFarmWithBlock(ConfirmationBlock block) = 0;

  virtual void connectionSettingsWantsShowSheetWindow(orvane::AuxiliaryWindow window) = 0;
  virtual void connectionSettingsWantsHideSheetWindow(orvane::AuxiliaryWindow window) = 0;

  /// The farms of the store are to be saved as they are.
  virtual void connectionSettingsWantsSaveSetttings() = 0;
};

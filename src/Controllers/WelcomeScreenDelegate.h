#pragma once

#include <memory>
#include <string>

#include "Model/AppFolderItem.h"
#include "Model/OvFarm.h"
#include "OrvaneCommon/OvError.h"

/// Where a WelcomeScreenViewController hands over. Main thread.
class WelcomeScreenDelegate {
 public:
  virtual ~WelcomeScreenDelegate() = default;

  /// The flow ended with a farm that is connected and stored. Resets the flow's content.
  virtual void welcomeScreenDoneWithConnectedFarm(const std::shared_ptr<OvFarm>& farm,
                                                  const std::shared_ptr<OvLocation>& location,
                                                  const std::shared_ptr<AppFolderItem>& receivedApps) = 0;
  /// The flow ended without one: by the user's wish, or with an error to be told. Resets the flow's content.
  /// @param error null: none
  virtual void welcomeScreenCancelWithError(const OvError* error) = 0;
  virtual void welcomeScreenWantsShowNotificationWithTitle(const std::string& title, const std::string& text) = 0;
};

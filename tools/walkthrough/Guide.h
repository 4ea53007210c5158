#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "MainLoop.h"
#include "Options.h"
#include "Orchestration/OvBrokerClientControllerDelegate.h"

namespace orvane::walkthrough {

/// Stands where a window would: prints what the flows tell, and answers what they ask from the command line. What came
/// of a flow is for the main thread, once isSettled().
class Guide : public OvBrokerClientControllerDelegate {
 public:
  /// The options must outlive the guide.
  Guide(const Options& options, std::shared_ptr<MainLoop> mainLoop)
      : options_(options), mainLoop_(std::move(mainLoop)) {}

  /// Whether the last flow has ended; begin() starts the next.
  bool isSettled() const { return isSettled_; }
  void begin() { isSettled_ = false; }

  const std::optional<std::string>& problem() const { return problem_; }  ///< what went wrong, in words
  const std::shared_ptr<OvFarm>& farm() const { return farm_; }
  int configurationStatus() const { return configurationStatus_; }
  const std::shared_ptr<AppFolderItem>& applications() const { return applications_; }

  void brokerClientControllerShowNotificationWithTitle(const std::string& title, const std::string& text) override;
  void brokerClientControllerPromptCredentialsWithOldCredentials(const OvCredentials& oldCredentials,
                                                                 CredentialsBlock onDoneBlock, bool shouldDisallowSave,
                                                                 const OvError* authenticationError) override;
  void brokerClientControllerPromptLocationForFarm(const std::shared_ptr<OvFarm>& farm, LocationBlock block) override;
  void brokerClientControllerShowUpdateWindowWithUpdateURL(const std::string& updateUrl, bool updateRequired,
                                                           const std::string& avaliableVersion,
                                                           UpdateBlock onChooseBlock) override;
  void brokerClientControllerDidConfigureFarm(const std::shared_ptr<OvFarm>& farm, int status,
                                              bool farmAlreadyExists) override;
  void brokerClientControllerDidFailFarmConfiguration(const OvError& error) override;
  void brokerClientControllerDidConnectToFarm(const std::shared_ptr<OvFarm>& farm,
                                              const std::shared_ptr<OvLocation>& location) override;
  void brokerClientControllerDidFailConnect(const OvError& error, const std::shared_ptr<OvFarm>& farm) override;
  void brokerClientControllerDidReceiveApplicationList(const std::shared_ptr<AppFolderItem>& rootFolder) override;
  void brokerClientControllerDidUpdateConnectionDescription(const std::string& description) override;

 private:
  // Has the main thread take the flow's outcome, which ends the flow.
  void settle(Work outcome);

  const Options& options_;
  const std::shared_ptr<MainLoop> mainLoop_;
  bool isSettled_ = false;
  std::optional<std::string> problem_;
  std::shared_ptr<OvFarm> farm_;
  int configurationStatus_ = 0;
  std::shared_ptr<AppFolderItem> applications_;
};

/// An error as a sentence: what failed, why, and the code.
std::string explained(const std::string& doing, const OvError& error);

}  // namespace orvane::walkthrough

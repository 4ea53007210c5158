#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Model/AppFolderItem.h"
#include "Model/OvFarm.h"
#include "OrvaneCommon/OvError.h"

/// What an OvBrokerClientController tells and asks whoever stands before the user.
///
/// All operations are called on a worker's thread: an implementation moves to the main thread itself. The callback of a
/// prompt is to be called once, on any thread; until then the worker waits, for as long as the user likes. One that is
/// dropped without a call counts as the answer that chooses nothing.
///
/// During a call the worker shares in owning the delegate: let go meanwhile, it ends on the worker's thread. What must
/// end on the main one, such as a window, therefore stands behind a delegate and isn't one itself.
class OvBrokerClientControllerDelegate {
 public:
  using CredentialsBlock = std::function<void(std::optional<OvCredentials>)>;  ///< nothing: the user cancelled
  using LocationBlock = std::function<void(std::shared_ptr<OvLocation>)>;      ///< null: none was chosen
  enum UpdateChoice : int { kInstall = 0, kCancel = 1, kClose = 2 };
  using UpdateBlock = std::function<void(int choice)>;

  virtual ~OvBrokerClientControllerDelegate() = default;

  /// The farm's configuration was replaced by the broker's.
  virtual void brokerClientControllerShowNotificationWithTitle(const std::string& title, const std::string& text) = 0;

  /// Credentials are needed. `authenticationError` says why those that were sent were refused, or is null.
  virtual void brokerClientControllerPromptCredentialsWithOldCredentials(const OvCredentials& oldCredentials,
                                                                         CredentialsBlock onDoneBlock,
                                                                         bool shouldDisallowSave,
                                                                         const OvError* authenticationError) = 0;
  virtual void brokerClientControllerPromptLocationForFarm(const std::shared_ptr<OvFarm>& farm,
                                                           LocationBlock block) = 0;
  /// There is a newer connector; `updateRequired` if the broker won't do without.
  virtual void brokerClientControllerShowUpdateWindowWithUpdateURL(const std::string& updateUrl, bool updateRequired,
                                                                   const std::string& avaliableVersion,
                                                                   UpdateBlock onChooseBlock) = 0;

  /// `status` is FarmConfigurationResult's.
  virtual void brokerClientControllerDidConfigureFarm(const std::shared_ptr<OvFarm>& farm, int status,
                                                      bool farmAlreadyExists) = 0;
  virtual void brokerClientControllerDidFailFarmConfiguration(const OvError& error) = 0;

  virtual void brokerClientControllerDidConnectToFarm(const std::shared_ptr<OvFarm>& farm,
                                                      const std::shared_ptr<OvLocation>& location) = 0;
  virtual void brokerClientControllerDidFailConnect(const OvError& error, const std::shared_ptr<OvFarm>& farm) = 0;
  /// Right behind the connect, and alone after a refresh. The tree is the receiver's.
  virtual void brokerClientControllerDidReceiveApplicationList(const std::shared_ptr<AppFolderItem>& rootFolder) = 0;
  virtual void brokerClientControllerDidUpdateConnectionDescription(const std::string& description) = 0;
};

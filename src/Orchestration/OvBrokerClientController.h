#pragma once

#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

#include "Broker/OvConnectorInfo.h"
#include "Broker/OvConnectorInfoResult.h"
#include "Model/OvFarmManager.h"
#include "Orchestration/FarmConfigurationResult.h"
#include "Orchestration/OvBrokerClientControllerDelegate.h"
#include "Orchestration/PendingTask.h"
#include "OrvaneCommon/OvUThreads.h"
#include "Platform/Queues.h"

class ApplicationLauncher;
class OvNetServiceBrowser;

/// Drives the protocol's clients for the farms of the store: connects, finds configurations, launches. One serves the
/// whole program.
///
/// An entry point does nothing on the caller's thread, the main one, but make a token and queue the work. What concerns
/// one farm runs on the farm's own queue, one thing at a time and in order, so that its client is never used by two
/// threads; farms don't wait for each other. The model belongs to the main thread: a flow goes there for all it reads
/// and writes of it, and waits until that is done. Flows stop silently, at the points that the table in
/// docs/connect-flow.md names, once their token is cancelled.
///
/// A delegate is held weakly; one that is gone is told nothing and chooses nothing. The entry points are virtual, so
/// that what stands above can be tested against flows that a test makes up.
class OvBrokerClientController : public std::enable_shared_from_this<OvBrokerClientController> {
 public:
  using Delegate = std::weak_ptr<OvBrokerClientControllerDelegate>;
  using LaunchCompletion = std::function<void(const OvError* error)>;  ///< null: launched

  struct Environment {
    std::shared_ptr<OvFarmManager> farmManager;
    std::shared_ptr<OvNetServiceBrowser> srvRecordsBrowser;
    std::shared_ptr<ApplicationLauncher> launcher;
    std::shared_ptr<orvane::MainQueue> mainQueue;
    std::shared_ptr<orvane::GlobalQueue> globalQueue;
  };

  /// Loads the farms. None of the environment's members is null. To be owned by a shared_ptr.
  explicit OvBrokerClientController(Environment environment);
  virtual ~OvBrokerClientController() = default;

  OvFarmManager& farmManager() const { return *_farmManager; }

  /// Connects the farm and delivers its applications. configureBrokerClient has prepared the farm's client with the
  /// farm's credentials, its anonymous flag and `location`, which becomes the one that is used in the end. Neither is
  /// null.
  virtual std::shared_ptr<PendingTask> connectToFarm(const std::shared_ptr<OvFarm>& farm,
                                                     const std::shared_ptr<OvLocation>& location, Delegate delegate);
  /// Delivers the applications of a connected farm anew.
  virtual std::shared_ptr<PendingTask> getApplicationListForFarm(const std::shared_ptr<OvFarm>& farm,
                                                                 Delegate delegate);

  /// Finds a farm's configuration from what the user typed or a link carried: an e-mail address, a broker's address, or
  /// that of a configuration file. Stores nothing.
  /// @param farmGUID  a farm of the store with this identity is used; nothing asks for none.
  /// @param fromConfigOnly  no broker is asked.
  virtual std::shared_ptr<PendingTask> configureFarmFromURL(const std::string& input,
                                                            std::optional<std::string> farmGUID, bool fromConfigOnly,
                                                            Delegate delegate);

  /// Starts an application, behind whatever its farm is doing. `completion` runs on the farm's queue, unless the token
  /// is cancelled first.
  virtual std::shared_ptr<PendingTask> launchApp(const std::shared_ptr<OvFarm>& farm,
                                                 const std::shared_ptr<OvLocation>& location,
                                                 const std::string& appName, LaunchCompletion completion);

  /// Has every session of the user on this machine disconnected, some time later.
  virtual void disconnectAllOpenedSessions();

  /// Sets a client up: always who this connector is; the user, unless `credentials` is null or empty and `anonymously`
  /// is false; and the location, unless it is null.
  ///
  /// A user name "domain\user" overrides the credentials' domain. To be called where the client may be used.
  /// @return nothing, or error 12 for a location without brokers, of which nothing is then applied.
  static std::optional<OvError> configureBrokerClient(OvBrokerClient& client, const OvCredentials* credentials,
                                                      bool anonymously, const OvLocation* location);

  /// Has the farm's own client set up so on the farm's queue, before whatever is posted there next: where no flow that
  /// still uses the client is disturbed, and the main thread waits for no look-up. A location without brokers leaves
  /// the client as it is.
  static void configureBrokerClientOfFarm(const OvFarm& farm, const OvCredentials* credentials, bool anonymously,
                                          const OvLocation* location);

  /// What this connector says of itself to a broker. May look the machine's address up. Any thread.
  static OvConnectorInfo makeConnectorInfo();

  /// The addresses to try for a typed one, in order, for `fillList`. False with an error if it can't be used.
  static bool getNormalizedEndpointsWithBroker(const OvBrokerClient& client, const std::string& urlString,
                                               std::list<std::string>& fillList, OvError* error);

 private:
  // A connect, step by step on the farm's queue (docs/connect-flow.md). What returns a bool says whether to go on; if
  // not, connect.error is what the user is to be told, if anything.
  struct Connect;
  void begin(Connect& connect) const;
  void awaitStoredPassword(const Connect& connect) const;
  bool establishConnnectionToFarm(Connect& connect) const;
  void setupFarmAfterConnect(const Connect& connect) const;
  bool checkGetConnectorInfoForFarm(Connect& connect) const;
  std::unique_ptr<OvConnectorInfoResult> verifyConnectorInfoForBrokerClient(const Connect& connect) const;
  bool validateConnectorInfoResult(Connect& connect, const OvConnectorInfoResult* result) const;
  bool validateConnectorStatus(Connect& connect, const OvConnectorInfoResult& result) const;
  bool validateConfigStatus(Connect& connect, const OvConnectorInfoResult& result) const;
  bool refuseUnassignedFarm(Connect& connect) const;
  bool replaceConfiguration(Connect& connect, const std::string& configFullPath) const;
  bool moveToLocation(Connect& connect, const std::shared_ptr<OvLocation>& chosen) const;
  std::shared_ptr<OvLocation> chooseLocationForFarm(const Connect& connect, const std::string& prefferedName) const;
  bool updateCredentialsForFarm(Connect& connect) const;
  static std::optional<OvCredentials> promptForCredentialsWithOldCredentials(const Connect& connect,
                                                                             const OvCredentials& oldCredentials,
                                                                             bool shouldDisallowSave,
                                                                             const std::optional<OvError>& retryError);
  static std::shared_ptr<AppFolderItem> getApplicationListForBrokerClient(Connect& connect);

  // Thrown out of a flow whose main thread runs nothing any more: the program is at its end.
  struct MainThreadIsGone {};

  // Runs a flow on a queue, with this object kept alive.
  void post(orvane::WorkQueue& queue, std::function<void()> flow);

  // On a worker: waits for `action` to have run on the main thread, and gives what it returned.
  template <class Action>
  auto onMain(const Action& action) const {
    using Result = std::invoke_result_t<Action>;
    std::optional<std::conditional_t<std::is_void_v<Result>, bool, Result>> result;
    OvU_ExecuteOnMainQueueSync(*_mainQueue, [&] {
      if constexpr (std::is_void_v<Result>) {
        action();
        result = true;
      } else {
        result.emplace(action());
      }
    });
    if (!result) throw MainThreadIsGone();
    if constexpr (!std::is_void_v<Result>) return std::move(*result);
  }

  // The roads of configureFarmFromURL, on its worker. True: the search for the domain's brokers was made, and what came
  // of it is delivered.
  bool configureFarmWithEmail(const std::string& email, const PendingTask& task, const Delegate& delegate,
                              bool fromXmlConfigOnly) const;
  FarmConfigurationResult configureFarmWithUrl(const std::string& url, const std::optional<std::string>& farmGUID,
                                               bool fromConfigOnly, const PendingTask& task) const;
  FarmConfigurationResult configureFarmForBYODWithUrl(const std::string& url,
                                                      const std::optional<std::string>& farmGUID,
                                                      const PendingTask& task) const;
  static FarmConfigurationResult configureFarmFromXmlUrl(const std::string& url, const PendingTask& task,
                                                         bool fromXmlConfigOnly);
  // Whether there was something to tell, and somebody to hear it.
  static bool feedFarmConfigurationResult(const FarmConfigurationResult& result, const Delegate& delegate);

  // Of launchApp, on the farm's queue. The result is that of a token that still runs: nothing if it launched.
  struct Launch;
  void runLaunch(const Launch& launch);
  std::optional<OvError> resultOfLaunch(const Launch& launch);

  const std::shared_ptr<OvFarmManager> _farmManager;
  const std::shared_ptr<OvNetServiceBrowser> _srvRecordsBrowser;
  const std::shared_ptr<ApplicationLauncher> _launcher;
  const std::shared_ptr<orvane::MainQueue> _mainQueue;
  const std::shared_ptr<orvane::GlobalQueue> _globalQueue;
};

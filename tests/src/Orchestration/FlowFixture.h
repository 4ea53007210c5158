#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "Orchestration/OvBrokerClientController.h"
#include "Orchestration/OvNetServiceBrowser.h"
#include "Platform/ThreadQueues.h"
#include "ScriptedDelegate.h"
#include "Support/FakeSecretStore.h"
#include "Support/HomeOfTest.h"
#include "Support/PumpedQueue.h"
#include "demo-broker/DemoBroker.h"

/// The program without a window: a controller with real worker threads over a store in a folder of the test, whose main
/// thread is the test's. Flows advance while that pumps the main queue.
class FlowFixture {
 public:
  /// @param dnsServers of the service search; by default one that refuses.
  /// @param launcher for the flows that launch.
  explicit FlowFixture(const std::string& dnsServers = "127.0.0.1:1",
                       std::shared_ptr<ApplicationLauncher> launcher = nullptr)
      : manager(std::make_shared<OvFarmManager>(home.file("settings_2.plist"),
                                                std::make_shared<MCCachedKeychain>(secrets), mainQueue, mainQueue)),
        controller(std::make_shared<OvBrokerClientController>(OvBrokerClientController::Environment{
            .farmManager = manager,
            .srvRecordsBrowser = std::make_shared<OvNetServiceBrowser>(std::chrono::seconds(5), dnsServers),
            .launcher = std::move(launcher),
            .mainQueue = mainQueue,
            .globalQueue = orvane::makeGlobalQueue()})) {}

  /// Runs the main thread until the farm's queue has done all that is posted on it by now.
  bool runUntilIdle(const OvFarm& farm) { return runUntilIdle(*farm.brokerClientDispatchQueue()); }
  bool runUntilIdle(orvane::WorkQueue& queue) {
    auto isDone = std::make_shared<std::atomic<bool>>(false);
    queue.post([isDone, main = mainQueue] { main->post([isDone] { *isDone = true; }); });
    return mainQueue->pumpUntil([&] { return isDone->load(); });
  }

  /// The messages that the broker got, in order; a file is its path.
  static std::vector<std::string> requestsOf(const orvane::demo::DemoBroker& broker) {
    std::vector<std::string> messages;
    for (const auto& request : broker.requests()) {
      messages.push_back(request.message.empty() ? request.target : request.message);
    }
    return messages;
  }

  const HomeOfTest home;
  const std::shared_ptr<FakeSecretStore> secrets = std::make_shared<FakeSecretStore>();
  const std::shared_ptr<PumpedQueue> mainQueue = std::make_shared<PumpedQueue>();
  const std::shared_ptr<OvFarmManager> manager;
  const std::shared_ptr<OvBrokerClientController> controller;
  const std::shared_ptr<ScriptedDelegate> delegate = std::make_shared<ScriptedDelegate>();
};

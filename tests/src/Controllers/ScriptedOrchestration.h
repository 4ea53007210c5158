#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Orchestration/OvBrokerClientController.h"

/// Flows that do nothing by themselves: the test tells their delegates what it makes up.
class ScriptedOrchestration : public OvBrokerClientController {
 public:
  enum class Kind { kConnect, kRefresh, kConfigure, kLaunch };

  /// A question that a flow has asked, until it is answered or let go.
  struct Prompt {
    static constexpr int kGoesOn = -1;
    static constexpr int kEndsSilently = 0;

    int answers = 0;
    int outcome = kGoesOn;  ///< of the answer: the code that the flow fails with, or one of these
  };
  struct Flow {
    Kind kind;
    std::shared_ptr<OvFarm> farm;
    std::shared_ptr<OvLocation> location;
    Delegate delegate;
    LaunchCompletion completion{};
    std::shared_ptr<PendingTask> task = PendingTask::startedTask();
    std::shared_ptr<Prompt> prompt{};  ///< the last that was asked
    std::weak_ptr<void> answerer{};    ///< gone when nobody can answer it any more
    char promptKind = ' ';             ///< 'c', 'l' or 'u'
    bool isConnected = false;
    bool isOver = false;

    bool isRunning() const { return task->isRunning() && !isOver; }
    bool isAsking() const { return prompt && prompt->answers == 0 && !answerer.expired(); }
  };

  using OvBrokerClientController::OvBrokerClientController;

  std::vector<std::shared_ptr<Flow>> flows;
  int disconnects = 0;
  std::function<void()> onDisconnect = [] {};

  std::shared_ptr<PendingTask> connectToFarm(const std::shared_ptr<OvFarm>& farm,
                                             const std::shared_ptr<OvLocation>& location, Delegate delegate) override {
    return add({Kind::kConnect, farm, location, std::move(delegate)});
  }
  std::shared_ptr<PendingTask> getApplicationListForFarm(const std::shared_ptr<OvFarm>& farm,
                                                         Delegate delegate) override {
    return add({Kind::kRefresh, farm, nullptr, std::move(delegate)});
  }
  std::shared_ptr<PendingTask> configureFarmFromURL(const std::string&, std::optional<std::string>, bool,
                                                    Delegate delegate) override {
    return add({Kind::kConfigure, nullptr, nullptr, std::move(delegate)});
  }
  std::shared_ptr<PendingTask> launchApp(const std::shared_ptr<OvFarm>& farm,
                                         const std::shared_ptr<OvLocation>& location, const std::string&,
                                         LaunchCompletion completion) override {
    return add({Kind::kLaunch, farm, location, {}, std::move(completion)});
  }
  void disconnectAllOpenedSessions() override {
    ++disconnects;
    onDisconnect();
  }

 private:
  std::shared_ptr<PendingTask> add(Flow flow) {
    flows.push_back(std::make_shared<Flow>(std::move(flow)));
    return flows.back()->task;
  }
};

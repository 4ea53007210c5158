#include "Controllers/BrokerEvents.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

namespace orvane {

/// The delegate of one operation. Its calls come on workers; what they post runs on the main thread, where alone the
/// members but the queue are used.
class BrokerEvents::Relay : public OvBrokerClientControllerDelegate, public std::enable_shared_from_this<Relay> {
 public:
  Relay(std::weak_ptr<OvBrokerClientControllerDelegate> receiver, std::shared_ptr<MainQueue> mainQueue)
      : receiver_(std::move(receiver)), mainQueue_(std::move(mainQueue)) {}

  void follow(std::shared_ptr<PendingTask> task) { task_ = std::move(task); }
  bool isOver() const { return isOver_ || !task_->isRunning(); }

  void brokerClientControllerShowNotificationWithTitle(const std::string& title, const std::string& text) override {
    tell([=](auto& receiver) { receiver.brokerClientControllerShowNotificationWithTitle(title, text); });
  }
  void brokerClientControllerPromptCredentialsWithOldCredentials(const OvCredentials& oldCredentials,
                                                                 CredentialsBlock onDoneBlock, bool shouldDisallowSave,
                                                                 const OvError* authenticationError) override {
    const std::optional<OvError> error =
        authenticationError == nullptr ? std::nullopt : std::optional(*authenticationError);
    tell([=, block = std::move(onDoneBlock)](auto& receiver) {
      receiver.brokerClientControllerPromptCredentialsWithOldCredentials(oldCredentials, block, shouldDisallowSave,
                                                                         error ? &*error : nullptr);
    });
  }
  void brokerClientControllerPromptLocationForFarm(const std::shared_ptr<OvFarm>& farm, LocationBlock block) override {
    tell([=, choose = std::move(block)](auto& receiver) {
      receiver.brokerClientControllerPromptLocationForFarm(farm, choose);
    });
  }
  void brokerClientControllerShowUpdateWindowWithUpdateURL(const std::string& updateUrl, bool updateRequired,
                                                           const std::string& avaliableVersion,
                                                           UpdateBlock onChooseBlock) override {
    tell([=, choose = std::move(onChooseBlock)](auto& receiver) {
      receiver.brokerClientControllerShowUpdateWindowWithUpdateURL(updateUrl, updateRequired, avaliableVersion, choose);
    });
  }
  void brokerClientControllerDidConfigureFarm(const std::shared_ptr<OvFarm>& farm, int status,
                                              bool farmAlreadyExists) override {
    tellLast([=](auto& receiver) { receiver.brokerClientControllerDidConfigureFarm(farm, status, farmAlreadyExists); });
  }
  void brokerClientControllerDidFailFarmConfiguration(const OvError& error) override {
    tellLast([=](auto& receiver) { receiver.brokerClientControllerDidFailFarmConfiguration(error); });
  }
  void brokerClientControllerDidConnectToFarm(const std::shared_ptr<OvFarm>& farm,
                                              const std::shared_ptr<OvLocation>& location) override {
    tell([=](auto& receiver) { receiver.brokerClientControllerDidConnectToFarm(farm, location); });
  }
  void brokerClientControllerDidFailConnect(const OvError& error, const std::shared_ptr<OvFarm>& farm) override {
    tellLast([=](auto& receiver) { receiver.brokerClientControllerDidFailConnect(error, farm); });
  }
  void brokerClientControllerDidReceiveApplicationList(const std::shared_ptr<AppFolderItem>& rootFolder) override {
    tellLast([=](auto& receiver) { receiver.brokerClientControllerDidReceiveApplicationList(rootFolder); });
  }
  void brokerClientControllerDidUpdateConnectionDescription(const std::string& description) override {
    tell([=](auto& receiver) { receiver.brokerClientControllerDidUpdateConnectionDescription(description); });
  }

 private:
  // A prompt that isn't told lets its block go, which answers it.
  template <class Event>
  void tell(Event event) {
    mainQueue_->post([relay = shared_from_this(), event = std::move(event)] {
      if (relay->isOver()) return;
      if (const auto receiver = relay->receiver_.lock()) event(*receiver);
    });
  }
  template <class Event>
  void tellLast(Event event) {
    tell([this, event = std::move(event)](auto& receiver) {
      isOver_ = true;
      event(receiver);
    });
  }

  const std::weak_ptr<OvBrokerClientControllerDelegate> receiver_;
  const std::shared_ptr<MainQueue> mainQueue_;
  std::shared_ptr<PendingTask> task_{};
  bool isOver_ = false;
};

BrokerEvents::BrokerEvents(std::weak_ptr<OvBrokerClientControllerDelegate> receiver,
                           std::shared_ptr<MainQueue> mainQueue)
    : receiver_(std::move(receiver)), mainQueue_(std::move(mainQueue)) {}

BrokerEvents::~BrokerEvents() = default;

std::shared_ptr<PendingTask> BrokerEvents::start(const Operation& operation) {
  std::erase_if(relays_, [](const auto& relay) { return relay->isOver(); });
  relays_.push_back(std::make_shared<Relay>(receiver_, mainQueue_));
  const std::shared_ptr<Relay> relay = relays_.back();
  std::shared_ptr<PendingTask> task = operation(relay);
  relay->follow(task);
  return task;
}

}  // namespace orvane

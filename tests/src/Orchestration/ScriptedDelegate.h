#pragma once

#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "Orchestration/OvBrokerClientControllerDelegate.h"

/// A user who answers prompts as the test wrote down, and a record of all that was told and asked, in order:
/// "notify", "credentials", "credentials 1326", "location", "update 1.10.0", "configured 2", "not configured 5",
/// "connected", "failed 14", "applications". May be called on any thread.
///
/// A prompt takes the next answer of its queue; when that is empty, nothing is chosen.
class ScriptedDelegate : public OvBrokerClientControllerDelegate {
 public:
  std::vector<std::string> events() const {
    const std::lock_guard lock(mutex_);
    return events_;
  }
  /// Whether any event so far begins like this.
  bool has(const std::string& beginning) const {
    for (const std::string& event : events()) {
      if (event.starts_with(beginning)) return true;
    }
    return false;
  }

  /// Called at each event, on the worker's thread, before a prompt is answered: such as to cancel the task there.
  std::function<void(const std::string& event)> onEvent;

  std::deque<std::optional<OvCredentials>> credentials;
  std::deque<std::string> locations;  ///< names of the farm's
  std::deque<int> updateChoices;

  // What came last, to be read when the flow has ended.
  std::shared_ptr<OvFarm> farm;
  std::shared_ptr<AppFolderItem> applications;
  OvError error;
  std::vector<OvCredentials> oldCredentials;  ///< of each credentials prompt
  std::vector<bool> disallowsSaving;          ///< likewise
  std::pair<std::string, bool> update;        ///< URL, and whether it is required

  void brokerClientControllerShowNotificationWithTitle(const std::string&, const std::string&) override {
    add("notify");
  }
  void brokerClientControllerPromptCredentialsWithOldCredentials(const OvCredentials& old, CredentialsBlock onDoneBlock,
                                                                 bool shouldDisallowSave,
                                                                 const OvError* authenticationError) override {
    oldCredentials.push_back(old);
    disallowsSaving.push_back(shouldDisallowSave);
    add("credentials" + (authenticationError == nullptr ? "" : " " + std::to_string(authenticationError->code)));
    onDoneBlock(next(credentials, std::optional<OvCredentials>()));
  }
  void brokerClientControllerPromptLocationForFarm(const std::shared_ptr<OvFarm>& asked, LocationBlock block) override {
    add("location");
    block(asked->findLocationWithName(next(locations, std::string("none"))));
  }
  void brokerClientControllerShowUpdateWindowWithUpdateURL(const std::string& updateUrl, bool updateRequired,
                                                           const std::string& avaliableVersion,
                                                           UpdateBlock onChooseBlock) override {
    update = {updateUrl, updateRequired};
    add("update " + avaliableVersion);
    onChooseBlock(next(updateChoices, int{kClose}));
  }
  void brokerClientControllerDidConfigureFarm(const std::shared_ptr<OvFarm>& configured, int status,
                                              bool farmAlreadyExists) override {
    farm = configured;
    add("configured " + std::to_string(status) + (farmAlreadyExists ? " known" : ""));
  }
  void brokerClientControllerDidFailFarmConfiguration(const OvError& what) override {
    error = what;
    add("not configured " + std::to_string(what.code));
  }
  void brokerClientControllerDidConnectToFarm(const std::shared_ptr<OvFarm>& connected,
                                              const std::shared_ptr<OvLocation>&) override {
    farm = connected;
    add("connected");
  }
  void brokerClientControllerDidFailConnect(const OvError& what, const std::shared_ptr<OvFarm>&) override {
    error = what;
    add("failed " + std::to_string(what.code));
  }
  void brokerClientControllerDidReceiveApplicationList(const std::shared_ptr<AppFolderItem>& root) override {
    applications = root;
    add("applications");
  }
  void brokerClientControllerDidUpdateConnectionDescription(const std::string& description) override {
    add("progress " + description);
  }

 private:
  template <class Answer>
  static Answer next(std::deque<Answer>& answers, Answer otherwise) {
    if (answers.empty()) return otherwise;
    Answer answer = std::move(answers.front());
    answers.pop_front();
    return answer;
  }

  void add(const std::string& event) {
    {
      const std::lock_guard lock(mutex_);
      events_.push_back(event);
    }
    if (onEvent) onEvent(event);
  }

  mutable std::mutex mutex_;
  std::vector<std::string> events_;
};

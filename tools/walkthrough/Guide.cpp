#include "Guide.h"

#include <iostream>

#include "PrintableText.h"

namespace orvane::walkthrough {

std::string explained(const std::string& doing, const OvError& error) {
  const std::string reason = printable(error.description);
  return doing + " failed: " + (reason.empty() ? "The broker gave no reason." : reason) + " (" +
         std::to_string(error.code) + ")";
}

void Guide::settle(Work outcome) {
  mainLoop_->post([this, outcome = std::move(outcome)] {
    outcome();
    isSettled_ = true;
  });
}

void Guide::brokerClientControllerShowNotificationWithTitle(const std::string& title, const std::string& text) {
  std::cout << printable(title) << ": " << printable(text) << '\n';
}

void Guide::brokerClientControllerPromptCredentialsWithOldCredentials(const OvCredentials& oldCredentials,
                                                                      CredentialsBlock onDoneBlock, bool,
                                                                      const OvError* authenticationError) {
  std::optional<OvCredentials> answer;
  std::string problem;
  if (authenticationError != nullptr) {
    problem = explained("The log-in", *authenticationError);
  } else if (options_.user.empty()) {
    problem = "The broker wants to know who logs in. Name somebody with --user.";
  } else {
    try {
      answer = oldCredentials;
      answer->setUsername(options_.user);
      answer->setPassword(SecretText(readPassword(options_)));
    } catch (const std::exception& error) {
      problem = error.what();
      answer.reset();
    }
  }
  // A prompt that is dismissed ends the flow without another word.
  if (!answer) settle([this, problem] { problem_ = problem; });
  onDoneBlock(std::move(answer));
}

void Guide::brokerClientControllerPromptLocationForFarm(const std::shared_ptr<OvFarm>& farm, LocationBlock block) {
  mainLoop_->post([farm, block = std::move(block)] {
    const std::shared_ptr<OvLocation> first = farm->locations().empty() ? nullptr : farm->locations().front();
    if (first) std::cout << "Of several locations, the first is taken: " << printable(first->name()) << ".\n";
    block(first);
  });
}

void Guide::brokerClientControllerShowUpdateWindowWithUpdateURL(const std::string& updateUrl, bool updateRequired,
                                                                const std::string& avaliableVersion,
                                                                UpdateBlock onChooseBlock) {
  std::cout << "Version " << printable(avaliableVersion) << " of the connector is at " << printable(updateUrl)
            << (updateRequired ? ", and the broker wants it" : "") << ".\n";
  onChooseBlock(kClose);
}

void Guide::brokerClientControllerDidConfigureFarm(const std::shared_ptr<OvFarm>& farm, int status, bool) {
  settle([this, farm, status] {
    farm_ = farm;
    configurationStatus_ = status;
  });
}

void Guide::brokerClientControllerDidFailFarmConfiguration(const OvError& error) {
  settle([this, error] { problem_ = explained("Finding \"" + printable(options_.address) + "\"", error); });
}

void Guide::brokerClientControllerDidConnectToFarm(const std::shared_ptr<OvFarm>& farm,
                                                   const std::shared_ptr<OvLocation>&) {
  mainLoop_->post([this, farm] { farm_ = farm; });
}

void Guide::brokerClientControllerDidFailConnect(const OvError& error, const std::shared_ptr<OvFarm>&) {
  settle([this, error] { problem_ = explained("The connection", error); });
}

void Guide::brokerClientControllerDidReceiveApplicationList(const std::shared_ptr<AppFolderItem>& rootFolder) {
  settle([this, rootFolder] { applications_ = rootFolder; });
}

void Guide::brokerClientControllerDidUpdateConnectionDescription(const std::string& description) {
  std::cout << printable(description) << '\n';
}

}  // namespace orvane::walkthrough

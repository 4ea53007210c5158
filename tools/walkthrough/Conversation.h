#pragma once

#include <list>
#include <memory>
#include <string>

#include "Broker/OvBrokerClient.h"
#include "Options.h"

namespace orvane::walkthrough {

/// The steps of a connector's work with a broker, each told on standard output as it is done.
/// Each throws Failure, in words for the user, if it doesn't work out.
class Conversation {
 public:
  explicit Conversation(const Options& options);

  /// From the typed address to the first URL that answers as a broker.
  void findBroker();
  void logIn();
  void showFarm();
  /// Prints the published applications by folder and writes their icons as PNG.
  void listApplications();
  /// Asks to launch the chosen application and writes the launch file. @return its path.
  std::string launch();

 private:
  // Makes the client ask this URL. Empty if it answers as a broker, else why not.
  std::string askForBroker(const std::string& url);
  void writeIcons() const;
  const OvApplication& chosenApplication() const;

  const Options options_;
  OvBrokerClient client_;
  std::list<std::shared_ptr<OvApplication>> applications_;
};

}  // namespace orvane::walkthrough

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
  /// The application to launch first, and the one to launch then, if there is another.
  const OvApplication& firstApplication() const;
  const OvApplication* secondApplication() const;
  /// Asks the broker to launch an application. @return what a session program needs to know.
  std::unique_ptr<OvSettings> launch(const OvApplication& application);

 private:
  // Makes the client ask this URL. Empty if it answers as a broker, else why not.
  std::string askForBroker(const std::string& url);
  void writeIcons() const;
  const OvApplication& applicationNamed(const std::string& name) const;

  const Options options_;
  OvBrokerClient client_;
  std::list<std::shared_ptr<OvApplication>> applications_;
};

}  // namespace orvane::walkthrough

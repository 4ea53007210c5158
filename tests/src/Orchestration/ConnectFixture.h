#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

#include "FlowFixture.h"

/// A demo broker with the user ann, password "secret", and a farm of hers to be connected to it.
class ConnectFixture : public FlowFixture {
 public:
  using Change = std::function<void(ConnectFixture&)>;

  explicit ConnectFixture(std::function<void(const orvane::demo::RecordedRequest&)> onRequest = {})
      : broker({.name = "Theirs",
                .users = {{.name = "ann", .password = "secret"}},
                .applications = {{.name = "editor", .folder = "Office"}}},
               {.onRequest = std::move(onRequest)}) {
    farm->setName("Mine");
    farm->credentials() = user("ann", "secret");
    farm->addLocation(location);
    *location = locationNamed("Office");
  }

  /// Runs what saving and loading have left, as that holds the queue that holds it.
  ~ConnectFixture() { mainQueue->pump(); }

  static OvCredentials user(const std::string& name, const std::string& password, bool isValid = true) {
    OvCredentials credentials;
    credentials.setUsername(name);
    credentials.setPassword(password);
    credentials.setNeedToSave(true);
    credentials.setCredentialsAreValid(isValid);
    return credentials;
  }
  OvLocation locationNamed(const std::string& name) const {
    OvLocation result;
    result.setName(name);
    result.setPort(broker.port());
    result.setBrokers({"127.0.0.1"});
    return result;
  }

  /// Makes the farm one that a broker has configured, of other locations than the one that it is connected at.
  void manage(const std::vector<std::string>& locations) {
    farm->setServerCreated(true);
    farm->setConfigDBGUID("G");
    farm->setConfigTimestamp("1");
    farm->locations().clear();
    for (const std::string& name : locations) farm->addLocation(std::make_shared<OvLocation>(locationNamed(name)));
  }
  /// Has the broker assign a configuration: `status` as it tells it, and attributes and locations of the file.
  void assign(int status, const std::string& attributes = {}, const std::vector<std::string>& locations = {"Office"},
              const std::string& brokers = "${host}") {
    std::string content =
        "<ServerFarms><Farm FarmName=\"F\" FarmDBGUID=\"F\" ConfigDBGUID=\"G\" ConfigTimestamp=\"2\" " + attributes +
        ">";
    for (size_t i = 0; i < locations.size(); ++i) {
      content += "<Location Number=\"" + std::to_string(i + 1) + "\" Name=\"" + locations[i] +
                 "\" TCPPort=\"${port}\" ServerList=\"" + brokers + "\" Protocol=\"0\"/>";
    }
    broker.changeFarm([&](orvane::demo::FarmDescription& changed) {
      changed.configuration = {.guid = "G", .timestamp = "2", .path = "configurations/my farm.xml"};
      if (status != 0) changed.configuration->status = status;
      changed.files = {
          {.path = "configurations/my farm.xml", .content = content + "</Farm></ServerFarms>", .fillIn = true}};
    });
  }
  void addFault(orvane::demo::Fault::Kind kind, const std::string& request, int number = 0) {
    broker.addFault({.kind = kind, .request = request, .times = 0, .number = number, .text = "Broken."});
  }
  void setCapabilities(std::optional<int> capabilities) {
    broker.changeFarm([&](auto& changed) { changed.capabilities = capabilities; });
  }
  /// Puts the farm into the store's list.
  void know() { manager->addFarm(farm); }

  std::shared_ptr<PendingTask> start() { return start(delegate, *controller); }
  std::shared_ptr<PendingTask> start(const std::shared_ptr<ScriptedDelegate>& receiver,
                                     OvBrokerClientController& through) {
    OvBrokerClientController::configureBrokerClient(*farm->brokerClient(), &farm->credentials(), farm->anonymousLogin(),
                                                    location.get());
    return through.connectToFarm(farm, location, receiver);
  }
  /// Connects to the end.
  void connect() {
    start();
    ASSERT_TRUE(runUntilIdle(*farm));
  }

  /// What the broker was asked: Broker info, Authenticate, Connector info, a File, farm Properties, application List.
  std::string requests() const {
    static const std::map<std::string, char> kLetters = {{"brokerinfo", 'B'},
                                                         {"authenticate", 'A'},
                                                         {"getconnectorinfo", 'C'},
                                                         {"getfarmproperties", 'P'},
                                                         {"getapplicationlist", 'L'}};
    std::string letters;
    for (const std::string& request : requestsOf(broker)) {
      const auto letter = kLetters.find(request);
      letters += request == "/configurations/my%20farm.xml" ? 'F' : letter == kLetters.end() ? '?' : letter->second;
    }
    return letters;
  }
  /// What the delegate was told and asked; "done" for "connected, applications".
  std::string events() const {
    std::string words;
    for (const std::string& event : delegate->events()) {
      if (words.ends_with("connected") && event == "applications") {
        words.replace(words.size() - 9, 9, "done");
      } else {
        words += (words.empty() ? "" : ", ") + event;
      }
    }
    return words;
  }
  /// A farm as "name@preferred location user", with "!" if the user is not to be sent without asking.
  static std::string describe(const OvFarm& farm) {
    const OvCredentials& credentials = farm.OvFarmConfiguration::credentials();
    return farm.name() + "@" + farm.OvFarmConfiguration::prefferedLocationName() + " " + credentials.username() +
           (credentials.credentialsAreValid() ? "" : "!");
  }
  /// The farms of the store's file; "none" if it has none, "unsaved" if there is no file.
  std::string stored() const {
    if (access(home.file("settings_2.plist").c_str(), F_OK) != 0) return "unsaved";
    OvFarmManager reader(home.file("settings_2.plist"), std::make_shared<MCCachedKeychain>(secrets), mainQueue,
                         mainQueue);
    reader.load();
    std::string farms;
    for (const auto& each : reader.farms()) farms += (farms.empty() ? "" : ", ") + describe(*each);
    return farms.empty() ? "none" : farms;
  }

  orvane::demo::DemoBroker broker;
  const std::shared_ptr<OvFarm> farm = std::make_shared<OvFarm>();
  const std::shared_ptr<OvLocation> location = std::make_shared<OvLocation>();
};

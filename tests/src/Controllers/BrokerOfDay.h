#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Model/OvFarm.h"
#include "demo-broker/DemoBroker.h"

/// A demo broker with the user ann, password "secret", who is published an editor and a calculator in one folder and a
/// game in another.
class BrokerOfDay : public orvane::demo::DemoBroker {
 public:
  BrokerOfDay()
      : DemoBroker({.name = "Home",
                    .users = {{.name = "ann", .password = "secret"}},
                    .applications = {{.name = "edit", .shortcut = "Editor", .folder = "Office"},
                                     {.name = "calc", .shortcut = "Calculator", .folder = "Office"},
                                     {.name = "chess", .shortcut = "Chess", .folder = "Games"}}}) {}

  /// From now on the user is assigned the configuration "Home" with one location.
  void assignConfiguration() {
    changeFarm([](orvane::demo::FarmDescription& farm) {
      farm.configuration = {.guid = "G", .timestamp = "2", .path = "configurations/home.xml"};
      farm.files = {{.path = "configurations/home.xml",
                     .content =
                         R"(<ServerFarms><Farm FarmName="Home" FarmDBGUID="F" ConfigDBGUID="G" ConfigTimestamp="2">)"
                         R"(<Location Number="1" Name="Office" TCPPort="${port}" ServerList="${host}" )"
                         R"(Protocol="0"/></Farm></ServerFarms>)",
                     .fillIn = true}};
    });
  }

  /// A farm of the user's that leads here, with the user's credentials.
  std::shared_ptr<OvFarm> farm(const std::string& name, bool doAutoLaunch = false,
                               const std::vector<std::string>& autoLaunchApps = {}) const {
    auto farm = std::make_shared<OvFarm>();
    farm->setName(name);
    farm->setDoAutoLaunch(doAutoLaunch);
    farm->setAutoLaunchApps(autoLaunchApps);
    farm->credentials().setUsername("ann");
    farm->credentials().setPassword("secret");
    farm->credentials().setNeedToSave(true);
    farm->credentials().setCredentialsAreValid(true);
    auto location = OvLocation::location();
    location->setName("Office");
    location->setPort(port());
    location->setBrokers({"127.0.0.1"});
    farm->addLocation(location);
    return farm;
  }
};

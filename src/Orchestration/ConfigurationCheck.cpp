// A farm's configuration and location, once the broker has said whether the configuration is current.

#include <algorithm>

#include "Orchestration/Connect.h"
#include "Orchestration/FlowTexts.h"
#include "Orchestration/UrlEscaping.h"
#include "Support/OvWriteLog.h"

bool OvBrokerClientController::validateConfigStatus(Connect& connect, const OvConnectorInfoResult& result) const {
  const std::string name = onMain([&] { return connect.location->name(); });
  std::shared_ptr<OvLocation> chosen;
  switch (result.getConfigStatus()) {
    case CONFIG_STATUS_NOT_FOUND:
      if (!refuseUnassignedFarm(connect)) return false;
      break;
    case CONFIG_STATUS_REQUIRED:
      if (!replaceConfiguration(connect, result.getConfigFullPath())) return false;
      chosen = chooseLocationForFarm(connect, name);
      break;
    case CONFIG_STATUS_OK: {
      const bool isCurrent = onMain([&] {
        return std::ranges::any_of(connect.farm->locations(),
                                   [&](const auto& location) { return *location == *connect.location; });
      });
      if (isCurrent) return true;
      chosen = chooseLocationForFarm(connect, name);
      break;
    }
    default:
      OvWriteLog(2, "%s: ValidateConnectorInfo: Undefined config status! Status == %i", __func__,
                 result.getConfigStatus());
  }
  return moveToLocation(connect, chosen);
}

// A managed farm is the broker's, which knows of none for this user any more. A manual one goes on.
bool OvBrokerClientController::refuseUnassignedFarm(Connect& connect) const {
  const bool isRemoved = onMain([&] {
    if (!connect.farm->serverCreated()) return false;
    _farmManager->removeFarm(connect.farm);
    _farmManager->save();
    return true;
  });
  if (!isRemoved) return true;
  OvWriteLog(2, "%s: A connector configuration has not been assigned to you. Please contact your system administrator.",
             "validateConfigStatus");
  return connect.fail(BrokerControllerError::kConfigurationNotAssigned);
}

bool OvBrokerClientController::replaceConfiguration(Connect& connect, const std::string& configFullPath) const {
  const auto wanted = OvFarm::farmFromUrl(orvane::escapedUrl(configFullPath));
  if (!wanted) return connect.fail(BrokerControllerError::kConfigurationUnobtainable);

  OvFarm& farm = *connect.farm;
  const bool isKnown = onMain([&] {
    if (!wanted->anonymousLogin()) {
      const OvCredentials& from = farm.credentials();
      OvCredentials& to = wanted->credentials();
      to.setUsername(from.username());
      to.setPassword(from.password());
      to.setDomain(from.domain());
      to.setNeedToSave(from.needToSave() && !wanted->disallowSaveCredentials());
      to.setCredentialsAreValid(from.credentialsAreValid());
    }
    wanted->setPrefferedLocationName(farm.prefferedLocationName());
    wanted->setDoAutoLaunch(farm.doAutoLaunch());
    wanted->setUserDescription(farm.userDescription());
    farm.setConfigurationEqualToFarm(wanted.get());
    return _farmManager->containsFarm(farm);
  });
  if (isKnown) {
    connect.tell([](auto& receiver) {
      receiver.brokerClientControllerShowNotificationWithTitle(
          orvane::localizedText(orvane::kConfigurationUpdatedTitle),
          orvane::localizedText(orvane::kConfigurationUpdated));
    });
  }
  onMain([&] {
    if (isKnown) {
      _farmManager->notifyOnFarmChange(connect.farm);
    } else {
      _farmManager->addFarm(connect.farm);
    }
    _farmManager->save();
  });
  return true;
}

std::shared_ptr<OvLocation> OvBrokerClientController::chooseLocationForFarm(const Connect& connect,
                                                                            const std::string& prefferedName) const {
  using Receiver = Connect::Receiver;
  auto location = onMain([&] {
    const auto only = connect.farm->defaultLocation();
    return only ? only : connect.farm->findLocationWithName(prefferedName);
  });
  if (location) return location;
  return connect.ask(location, [&](Receiver& receiver, Receiver::LocationBlock block) {
    receiver.brokerClientControllerPromptLocationForFarm(connect.farm, std::move(block));
  });
}

// The location object that the connect began with becomes the chosen one, and stands for it in the farm.
bool OvBrokerClientController::moveToLocation(Connect& connect, const std::shared_ptr<OvLocation>& chosen) const {
  OvFarm& farm = *connect.farm;
  if (!onMain([&] { return farm.serverCreated(); })) return true;  // a manual farm keeps the location it came with
  if (!chosen) {
    OvWriteLog(2, "%s: Location has not been selected.", "validateConfigStatus");
    return connect.fail(BrokerControllerError::kNoLocationSelected);
  }

  struct Settings {
    OvCredentials credentials;
    bool isAnonymous;
    OvLocation location;
  };
  const Settings settings = onMain([&] {
    connect.location->setEqualToLocation(chosen.get());
    farm.replaceLocation(*chosen, connect.location);
    _farmManager->save();
    return Settings{farm.credentials(), farm.anonymousLogin(), *connect.location};
  });
  connect.error =
      configureBrokerClient(*connect.client, &settings.credentials, settings.isAnonymous, &settings.location);
  if (connect.error) return false;
  try {
    connect.client->getBrokerInfo();
  } catch (const OvException& exception) {
    OvWriteLog(2, "%s: The prompting for broker info after getting connector info failed: error code = %d",
               "validateConfigStatus", exception.getErrorCode());
  }
  return true;
}

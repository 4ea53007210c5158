// What the broker thinks of this connector: its version, and the configuration that it holds.

#include "Orchestration/Connect.h"
#include "OrvaneCommon/OvUVersions.h"
#include "Support/OvWriteLog.h"

bool OvBrokerClientController::checkGetConnectorInfoForFarm(Connect& connect) const {
  OvFarm& farm = *connect.farm;
  const bool isKnown = onMain([&] { return _farmManager->containsFarm(farm); });
  // A broker that asks nobody gives a new farm its configuration before the user is asked for anything.
  if ((isKnown || connect.client->getGetConnectorInfoAuthenticationRequired()) && !updateCredentialsForFarm(connect)) {
    return false;
  }

  const auto result = verifyConnectorInfoForBrokerClient(connect);
  if (!connect.isRunning()) return false;

  const bool wasAnonymous = onMain([&] { return farm.anonymousLogin(); });
  if (!validateConnectorInfoResult(connect, result.get()) || !connect.isRunning()) return false;

  struct State {
    bool isAnonymous;
    bool hasValidCredentials;
  };
  const State now = onMain([&] {
    const OvCredentials& credentials = farm.credentials();
    return State{farm.anonymousLogin(), !credentials.isEmpty() && credentials.credentialsAreValid()};
  });
  if (!wasAnonymous && now.isAnonymous) return checkGetConnectorInfoForFarm(connect);  // once: it was anonymous then
  if (now.isAnonymous || now.hasValidCredentials) return true;
  return updateCredentialsForFarm(connect);
}

std::unique_ptr<OvConnectorInfoResult> OvBrokerClientController::verifyConnectorInfoForBrokerClient(
    const Connect& connect) const {
  OvConnectorInfo info = makeConnectorInfo();
  onMain([&] {
    const OvFarm& farm = *connect.farm;
    if (!farm.configDBGUID().empty()) info.setConfigGUID(farm.configDBGUID());
    if (!farm.configTimestamp().empty()) info.setConfigTimestamp(farm.configTimestamp());
  });
  return connect.client->getConnectorInfo(info);
}

bool OvBrokerClientController::validateConnectorInfoResult(Connect& connect,
                                                           const OvConnectorInfoResult* result) const {
  if (result == nullptr) {
    OvWriteLog(2, "%s: ValidateConnectorInfo: OvConnectorInfoResult* == NULL", __func__);
    return connect.fail(BrokerControllerError::kNoConnectorInformation);
  }
  return validateConnectorStatus(connect, *result) && validateConfigStatus(connect, *result);
}

bool OvBrokerClientController::validateConnectorStatus(Connect& connect, const OvConnectorInfoResult& result) const {
  using Receiver = Connect::Receiver;
  if (result.getConnectorStatus() != CONNECTOR_STATUS_UPDATE_AVAILABLE) return true;
  OvWriteLog(4, "%s: version %s is installed, the broker wants %s", __func__, OvU_GetConnectorVesrion().c_str(),
             result.getConnectorMinVersion().c_str());
  const int choice = connect.ask(int{Receiver::kClose}, [&](Receiver& receiver, Receiver::UpdateBlock block) {
    receiver.brokerClientControllerShowUpdateWindowWithUpdateURL(result.getConnectorInstallFullPath(),
                                                                 result.getConnectorOptions() == 1,
                                                                 result.getConnectorMinVersion(), std::move(block));
  });
  switch (choice) {
    case Receiver::kInstall:
      return connect.fail(BrokerControllerError::kInstallsUpdate);
    case Receiver::kCancel:
      return connect.fail(BrokerControllerError::kRefusedUpdate);
    default:
      return true;
  }
}

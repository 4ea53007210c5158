// From a farm to its applications, and what happens around the steps that have files of their own.

#include <pugixml.hpp>

#include "Orchestration/Connect.h"
#include "Support/OvWriteLog.h"

namespace {

// What a broker calls a farm, or nothing if that is no text.
std::string asText(const std::string& bytes) {
  const std::string text = OvFarm::nsStringFromWstring(pugi::as_wide(bytes));
  return text == bytes ? text : "";
}

}  // namespace

void OvBrokerClientController::Connect::reportFailure(const char* function) const {
  OvWriteLog(2, "%s: NSError has been occured: [%s] error code: [%d]", function, error->description.c_str(),
             error->code);
  tell([&](auto& receiver) { receiver.brokerClientControllerDidFailConnect(*error, farm); });
}

std::shared_ptr<PendingTask> OvBrokerClientController::connectToFarm(const std::shared_ptr<OvFarm>& farm,
                                                                     const std::shared_ptr<OvLocation>& location,
                                                                     Delegate delegate) {
  auto task = PendingTask::startedTask();
  post(*farm->brokerClientDispatchQueue(), [this, farm, location, delegate = std::move(delegate), task] {
    Connect connect{farm, location, delegate, task};
    begin(connect);
    if (!establishConnnectionToFarm(connect)) return;
    const auto rootFolder = getApplicationListForBrokerClient(connect);
    if (!connect.isRunning()) return;
    if (!rootFolder) return connect.reportFailure("connectToFarm");
    connect.tell([&](auto& receiver) { receiver.brokerClientControllerDidConnectToFarm(farm, location); });
    connect.tell([&](auto& receiver) { receiver.brokerClientControllerDidReceiveApplicationList(rootFolder); });
  });
  return task;
}

std::shared_ptr<PendingTask> OvBrokerClientController::getApplicationListForFarm(const std::shared_ptr<OvFarm>& farm,
                                                                                 Delegate delegate) {
  auto task = PendingTask::startedTask();
  post(*farm->brokerClientDispatchQueue(), [this, farm, delegate = std::move(delegate), task] {
    Connect connect{farm, nullptr, delegate, task};
    connect.client = onMain([&] { return farm->brokerClient(); });
    const auto rootFolder = getApplicationListForBrokerClient(connect);
    if (!connect.isRunning()) return;
    if (!rootFolder) return connect.reportFailure("getApplicationListForFarm");
    connect.tell([&](auto& receiver) { receiver.brokerClientControllerDidReceiveApplicationList(rootFolder); });
  });
  return task;
}

void OvBrokerClientController::begin(Connect& connect) const {
  connect.client = onMain([&] { return connect.farm->brokerClient(); });
  awaitStoredPassword(connect);
  try {
    connect.client->getBrokerInfo();
  } catch (const OvException& exception) {
    OvWriteLog(2,
               "%s: The prompting for broker info on the beginning of the connect failed(possible old broker): error "
               "code = %d",
               "connectToFarm", exception.getErrorCode());
  }
}

// The secret store may have been slow or locked when the farms were loaded. This is before the broker is asked for its
// capabilities, as new credentials make the client forget those.
void OvBrokerClientController::awaitStoredPassword(const Connect& connect) const {
  if (!connect.client->getPassword().empty()) return;
  OvFarm& farm = *connect.farm;
  orvane::PromptAnswer<bool> isSettled(false);
  {
    const auto block = isSettled.block();
    const bool isStored = onMain([&] {
      const OvCredentials& credentials = farm.credentials();
      if (farm.anonymousLogin() || credentials.isEmpty() || !credentials.needToSave()) return false;
      if (!credentials.password().empty()) {  // it came since the client was set up
        block(true);
      } else if (_farmManager->containsFarm(farm)) {
        _farmManager->loadPasswordsFromKeychain([block] { block(true); });
      } else {
        return false;
      }
      return true;
    });
    if (!isStored) return;
  }
  isSettled.wait();
  const OvCredentials credentials = onMain([&] { return farm.credentials(); });
  if (!credentials.password().empty()) configureBrokerClient(*connect.client, &credentials, false, nullptr);
}

bool OvBrokerClientController::establishConnnectionToFarm(Connect& connect) const {
  bool isConnected = false;
  try {
    isConnected = connect.client->getGetConnectorInfoSupported() ? checkGetConnectorInfoForFarm(connect)
                                                                 : updateCredentialsForFarm(connect);
    if (isConnected) setupFarmAfterConnect(connect);
    if (!connect.isRunning()) return false;
  } catch (const OvException& exception) {
    isConnected = connect.fail(exception);
  }

  // Nothing that follows waits for the disk: the applications are fetched meanwhile, and whatever the delegate does on
  // the main thread comes behind this.
  _mainQueue->post(
      [manager = _farmManager, task = connect.task, farm = connect.farm, location = connect.location, isConnected] {
        if (!task->isRunning()) return;
        farm->setPrefferedLocationName(isConnected ? location->name() : kEmptyPrefferedLocationName);
        manager->save();
      });
  if (!isConnected && connect.error) connect.reportFailure(__func__);
  return isConnected;
}

void OvBrokerClientController::setupFarmAfterConnect(const Connect& connect) const {
  OvBrokerClient& client = *connect.client;
  client.setClientBitsPerPixel(32);
  client.getFarmProperties();
  onMain([&, name = asText(client.getFarmName())] {
    if (connect.isRunning()) connect.farm->setName(name);
  });
  client.setRandomize(false);
}

// From what a user typed or a link carried to a farm: the broker itself, or a configuration file.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "Http/Downloads.h"
#include "Orchestration/BrokerControllerError.h"
#include "Orchestration/ConfigurationFileAddress.h"
#include "Orchestration/OvBrokerClientController.h"
#include "Orchestration/OvNetServiceBrowser.h"
#include "OrvaneCommon/OvUText.h"
#include "Support/FileReplacement.h"
#include "Support/OvException.h"
#include "Support/OvWriteLog.h"
#include "Support/TrimWhitespaces.h"

namespace {

constexpr size_t kMaximumAddressLength = 2047;  // of what is typed and of what is made of it
constexpr uintmax_t kMaximumFileSize = uintmax_t{16} << 20;

FarmConfigurationResult failure(BrokerControllerError code) {
  return FarmConfigurationResult::resultWithError(getErrorForBrokerControllerErrorCode(code));
}

bool isAddress(const std::string& text) {
  const auto isControl = [](char byte) { return (byte >= 0 && byte < ' ') || byte == '\x7F'; };
  return text.size() <= kMaximumAddressLength && std::ranges::none_of(text, isControl);
}

std::optional<std::string> download(const std::string& url) {
  void* buffer = nullptr;
  size_t size = 0;
  if (!ovutils_download_url_to_buffer(url.c_str(), &buffer, &size)) return std::nullopt;
  const std::unique_ptr<void, void (*)(void*)> owner(buffer, std::free);
  return std::string(static_cast<const char*>(buffer), size);
}

std::optional<std::string> readLocalFile(const std::string& path) {
  std::error_code error;
  const uintmax_t size = std::filesystem::file_size(path, error);
  if (error || size > kMaximumFileSize) return std::nullopt;
  return orvane::readFile(path);
}

}  // namespace

std::shared_ptr<PendingTask> OvBrokerClientController::configureFarmFromURL(const std::string& input,
                                                                            std::optional<std::string> farmGUID,
                                                                            bool fromConfigOnly, Delegate delegate) {
  const auto task = PendingTask::startedTask();
  post(*_globalQueue, [this, typed = trim_whitespaces(input), farmGUID = std::move(farmGUID), fromConfigOnly,
                       delegate = std::move(delegate), task] {
    const bool fromXmlConfigOnly = fromConfigOnly || orvane::isConfigurationFileAddress(typed);
    if (configureFarmWithEmail(typed, *task, delegate, fromXmlConfigOnly)) return;
    feedFarmConfigurationResult(configureFarmWithUrl(typed, farmGUID, fromConfigOnly, *task), delegate);
  });
  return task;
}

bool OvBrokerClientController::configureFarmWithEmail(const std::string& email, const PendingTask& task,
                                                      const Delegate& delegate, bool fromXmlConfigOnly) const {
  if (email.find('@') == std::string::npos || !isAddress(email)) return false;
  const std::string query = OvU_GetServiceSearchQueryStringForEmail(email);
  return _srvRecordsBrowser->searchServiceRecordsWithQuery(query, [&](const std::vector<std::string>& names) {
    FarmConfigurationResult result = failure(BrokerControllerError::kConfigurationNotFound);
    for (const std::string& name : names) {
      if (!task.isRunning()) return;
      result = configureFarmWithUrl(name, "", fromXmlConfigOnly, task);
      if (result.configuredFarm()) break;
    }
    if (task.isRunning()) feedFarmConfigurationResult(result, delegate);
  });
}

FarmConfigurationResult OvBrokerClientController::configureFarmWithUrl(const std::string& url,
                                                                       const std::optional<std::string>& farmGUID,
                                                                       bool fromConfigOnly,
                                                                       const PendingTask& task) const {
  std::optional<FarmConfigurationResult> result;
  if (!fromConfigOnly) {
    result = configureFarmForBYODWithUrl(url, farmGUID, task);
    if (!task.isRunning()) return failure(BrokerControllerError::kCancelled);
  }
  if (!result || !result->configuredFarm()) result = configureFarmFromXmlUrl(url, task, fromConfigOnly);
  return task.isRunning() ? *result : failure(BrokerControllerError::kCancelled);
}

FarmConfigurationResult OvBrokerClientController::configureFarmForBYODWithUrl(
    const std::string& url, const std::optional<std::string>& farmGUID, const PendingTask& task) const {
  const std::shared_ptr<OvFarm> storedFarm =
      farmGUID ? onMain([&] { return _farmManager->findFarmWithGUID(*farmGUID); }) : nullptr;
  // Not the farm's own client: a flow may use that, and one that hangs must not hold up this one.
  const auto client = std::make_shared<OvBrokerClient>();
  configureBrokerClient(*client, nullptr, false, nullptr);

  std::list<std::string> endpoints;
  OvError error;
  if (!getNormalizedEndpointsWithBroker(*client, url, endpoints, &error)) {
    return FarmConfigurationResult::resultWithError(error);
  }
  const bool isAnswered = std::ranges::any_of(endpoints, [&](const std::string& endpoint) {
    try {
      client->setURL(endpoint);
      client->getBrokerInfo();
      return true;
    } catch (const OvException&) {
      OvWriteLog(2, "%s: Farm configuration: cannot get broker info with URL: %s", "configureFarmForBYODWithUrl",
                 endpoint.c_str());
      return false;
    }
  });
  if (isAnswered && !task.isRunning()) return failure(BrokerControllerError::kCancelled);
  if (!isAnswered || !client->getGetConnectorInfoSupported()) {
    return failure(BrokerControllerError::kConfigurationNotFound);
  }

  OvWriteLog(4, "%s: Farm configuration: broker supports getConnectorInfo", __func__);
  if (storedFarm) {
    onMain([&] { storedFarm->setBrokerClient(client); });
    return FarmConfigurationResult::resultWithFarm(storedFarm, FarmConfigurationResult::kFromBroker, true);
  }
  const auto farm = std::make_shared<OvFarm>();
  farm->setServerCreated(true);
  farm->setBrokerClient(client);
  return FarmConfigurationResult::resultWithFarm(farm, FarmConfigurationResult::kFromBroker, false);
}

FarmConfigurationResult OvBrokerClientController::configureFarmFromXmlUrl(const std::string& url,
                                                                          const PendingTask& task,
                                                                          bool fromXmlConfigOnly) {
  const std::string address = orvane::configurationFileAddress(url);
  OvBrokerClient client;
  configureBrokerClient(client, nullptr, false, nullptr);
  std::list<std::string> endpoints;
  OvError error;
  if (!getNormalizedEndpointsWithBroker(client, address, endpoints, &error)) {
    return FarmConfigurationResult::resultWithError(error);
  }

  std::optional<std::string> data;
  for (const std::string& endpoint : endpoints) {
    if (!task.isRunning()) return failure(BrokerControllerError::kCancelled);
    data = download(endpoint);
    if (data) break;
  }
  // What looks like a host's name is not taken for a folder of the working folder.
  const std::string localPath = orvane::localConfigurationPath(address);
  if (!data && (orvane::isConfigurationFileAddress(url) || localPath.starts_with('/'))) data = readLocalFile(localPath);

  const std::shared_ptr<OvFarm> farm = OvFarm::farmFromXmlConfigData(data ? &*data : nullptr);
  if (farm) return FarmConfigurationResult::resultWithFarm(farm, FarmConfigurationResult::kFromFile, false);
  if (data) return failure(BrokerControllerError::kConfigurationInvalid);
  return failure(fromXmlConfigOnly ? BrokerControllerError::kConfigurationNotFound
                                   : BrokerControllerError::kConfigurationNotAssigned);
}

bool OvBrokerClientController::feedFarmConfigurationResult(const FarmConfigurationResult& result,
                                                           const Delegate& delegate) {
  const std::optional<OvError>& error = result.error();
  if (error && error->code == static_cast<int>(BrokerControllerError::kCancelled)) return false;
  const std::shared_ptr<OvBrokerClientControllerDelegate> receiver = delegate.lock();
  if (!receiver) return false;
  if (error) {
    receiver->brokerClientControllerDidFailFarmConfiguration(*error);
  } else {
    receiver->brokerClientControllerDidConfigureFarm(result.configuredFarm(), result.farmConfigurationStatus(),
                                                     result.farmAlreadyExists());
  }
  return true;
}

bool OvBrokerClientController::getNormalizedEndpointsWithBroker(const OvBrokerClient& client,
                                                                const std::string& urlString,
                                                                std::list<std::string>& fillList, OvError* error) {
  const std::string text = getErrorForBrokerControllerErrorCode(BrokerControllerError::kInvalidUrl).description;
  try {
    if (!isAddress(trim_whitespaces(urlString))) throw std::invalid_argument("too long, or with control characters");
    fillList = client.normalizeBrokerEndpointUrl(urlString);
    return true;
  } catch (const OvException& exception) {
    OvWriteLog(2, "%s: [EXCEPTION] normalizeBrokerEndpointUrl Code=%d, text=%s", __func__, exception.getErrorCode(),
               exception.what());
    OvU_ConfigureError(error, exception.getErrorCode(), text);
  } catch (const std::exception& exception) {
    OvWriteLog(2, "%s: [EXCEPTION] normalizeBrokerEndpointUrl text=%s", __func__, exception.what());
    configureError(error, BrokerControllerError::kInvalidUrl);
  }
  return false;
}

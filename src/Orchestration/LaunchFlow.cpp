#include <utility>

#include <unistd.h>

#include "Orchestration/ApplicationLauncher.h"
#include "Orchestration/OvBrokerClientController.h"
#include "Support/OvException.h"
#include "Support/OvWriteLog.h"

namespace {

constexpr const char* kFunction = "launchApp";

// A launch file that is made for a launch: it goes again unless a session program was started with it.
struct LaunchFile {
  explicit LaunchFile(std::string newPath) : path(std::move(newPath)) {}
  ~LaunchFile() {
    if (!isInUse && !path.empty()) unlink(path.c_str());
  }
  LaunchFile(const LaunchFile&) = delete;
  LaunchFile& operator=(const LaunchFile&) = delete;

  const std::string path;  // empty if none can be made
  bool isInUse = false;
};

}  // namespace

struct OvBrokerClientController::Launch {
  std::shared_ptr<PendingTask> task;
  std::shared_ptr<OvFarm> farm;
  std::shared_ptr<OvLocation> location;
  std::string appName;
  LaunchCompletion completion;
};

std::shared_ptr<PendingTask> OvBrokerClientController::launchApp(const std::shared_ptr<OvFarm>& farm,
                                                                 const std::shared_ptr<OvLocation>& location,
                                                                 const std::string& appName,
                                                                 LaunchCompletion completion) {
  auto task = PendingTask::startedTask();
  post(*farm->brokerClientDispatchQueue(),
       [this, launch = Launch{task, farm, location, appName, std::move(completion)}] { runLaunch(launch); });
  return task;
}

void OvBrokerClientController::runLaunch(const Launch& launch) {
  std::optional<OvError> error;
  try {
    error = resultOfLaunch(launch);
  } catch (const OvException& exception) {
    error = OvU_MakeNSError(exception.getErrorCode(), exception.getErrorText());
  }
  if (launch.task->isRunning()) launch.completion(error ? &*error : nullptr);
}

std::optional<OvError> OvBrokerClientController::resultOfLaunch(const Launch& launch) {
  const auto isCancelled = [&] {
    if (launch.task->isRunning()) return false;
    OvWriteLog(4, "%s: Launch application has been cancelled", kFunction);
    return true;
  };
  OvError error;
  // The client is lent to the main thread, which alone knows what is to go into it; the farm's queue waits meanwhile.
  const std::shared_ptr<OvBrokerClient> client = onMain([&]() -> std::shared_ptr<OvBrokerClient> {
    if (!launch.farm->configureProxySettingsForLocation(launch.location.get(), &error)) return nullptr;
    launch.farm->setCurrentApplicationSettings();
    return launch.farm->brokerClient();
  });
  if (!client) {
    if (launch.task->isRunning()) OvWriteLog(2, "%s: %s", kFunction, error.description.c_str());
    return error;
  }
  LaunchFile file(_launcher->formatOvlfileNameForApp(launch.appName).value_or(""));
  const std::unique_ptr<OvSettings> settings = client->launchApplication(launch.appName);
  if (isCancelled()) return std::nullopt;
  _launcher->applyOrvaneSettings(*settings);
  const bool isLaunched = _launcher->launchApplicationWithSettings(*settings, file.path, &error, &file.isInUse);
  if (isCancelled() || isLaunched) return std::nullopt;
  return error;
}

void OvBrokerClientController::disconnectAllOpenedSessions() {
  post(*_globalQueue, [] { ApplicationLauncher::disconnectAllOpenedSessions(); });
}

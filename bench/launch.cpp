// From launchApp to the main function of the session program, a real process, beside the broker's part of it: the same
// exchange alone. Launch files go to a folder in memory, as the user's runtime folder is one, or on disk.

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <semaphore.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Orchestration/ApplicationLauncher.h"
#include "Orchestration/OvBrokerClientController.h"
#include "Orchestration/OvNetServiceBrowser.h"
#include "OrvaneCommon/MCCachedKeychain.h"
#include "Platform/EndProcess.h"
#include "Platform/Linux/PosixProcessStarter.h"
#include "Platform/ThreadQueues.h"
#include "Sessions/OvSessionManager.h"
#include "Support/FileDescriptor.h"
#include "demo-broker/DemoBroker.h"

namespace {

using orvane::demo::DemoBroker;

constexpr const char* kPipeVariable = "ORVANE_BENCH_STARTED";

int64_t nanoseconds() {
  return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

// A main thread of a program that does nothing else.
class IdleMainThread final : public orvane::MainQueue {
 public:
  void post(orvane::Work work) override { queue_->post(std::move(work)); }
  bool isCurrentThread() const override { return false; }

 private:
  const std::shared_ptr<orvane::SerialQueue> queue_ = orvane::makeSerialQueue();
};

struct NoSecrets final : orvane::SecretStore {
  Item load(const std::string&, const std::string&) override { return {}; }
  bool save(const std::string&, const std::string&, std::span<const uint8_t>) override { return false; }
};

struct NoScreens final : orvane::Screens {
  Size largestWindowContent() const override { return {}; }
  Size visibleArea() const override { return {}; }
};

// All that goes with a run: its folder, its session registry, and the pipe through which programs tell their start.
class Surroundings {
 public:
  explicit Surroundings(const std::string& parent) : folder_(newFolder(parent)) {
    OvSessionManager::useRegistry(names_);
    const std::string pipe = folder_ + "/started";
    if (mkfifo(pipe.c_str(), 0600) != 0) throw std::runtime_error("no pipe");
    pipe_ = open(pipe.c_str(), O_RDWR | O_CLOEXEC);
    setenv(kPipeVariable, pipe.c_str(), 1);
  }
  ~Surroundings() {
    close(pipe_);
    sem_unlink(names_.semaphore.c_str());
    shm_unlink(names_.sharedMemory.c_str());
    std::filesystem::remove_all(folder_);
  }
  Surroundings(const Surroundings&) = delete;
  Surroundings& operator=(const Surroundings&) = delete;

  const std::string& folder() const { return folder_; }
  // Waits for the next program. When its main function began.
  int64_t started() const {
    int64_t time = 0;
    if (read(pipe_, &time, sizeof time) != sizeof time) throw std::runtime_error("no start");
    return time;
  }

 private:
  static std::string newFolder(const std::string& parent) {
    std::string name = parent + "/orvane-bench-XXXXXX";
    if (!mkdtemp(name.data())) throw std::runtime_error("no folder");
    return name;
  }

  const std::string folder_;
  const std::string base_ = folder_.substr(folder_.rfind('/'));
  const orvane::SessionRegistryNames names_{base_ + ".mutex", base_ + ".shared", folder_ + "/socket"};
  int pipe_ = -1;
};

DemoBroker& broker() {
  static DemoBroker broker(
      {.anonymousAllowed = true,
       .applications = {{.name = "Word", .path = "winword.exe", .launch = {{"servername", "A"}}}}});
  return broker;
}

void logOn(OvBrokerClient& client) {
  client.setURL(broker().url());
  client.getBrokerInfo();
  client.launchApplication("Word");
}

void brokersPart(benchmark::State& state) {
  OvBrokerClient client;
  logOn(client);
  for ([[maybe_unused]] auto _ : state) client.launchApplication("Word");
}
BENCHMARK(brokersPart)->UseRealTime()->Unit(benchmark::kMillisecond);

void launchToMain(benchmark::State& state, const std::string& parent) {
  const Surroundings surroundings(parent);
  OrvaneSettings preferences("");
  const auto mainQueue = std::make_shared<IdleMainThread>();
  const auto globalQueue = orvane::makeGlobalQueue();
  const auto launcher = std::make_shared<ApplicationLauncher>(ApplicationLauncher::Environment{
      .preferences = preferences,
      .processStarter = std::make_shared<orvane::PosixProcessStarter>(globalQueue),
      .contentOpener = nullptr,  // nothing of the kind is launched
      .screens = std::make_shared<NoScreens>(),
      .sessionProgram = [] { return std::string(ORVANE_BENCH_SESSION_PROGRAM); },
      .launchFolder = [&] { return surroundings.folder(); },
  });
  const auto controller = std::make_shared<OvBrokerClientController>(OvBrokerClientController::Environment{
      .farmManager = std::make_shared<OvFarmManager>(surroundings.folder() + "/farms",
                                                     std::make_shared<MCCachedKeychain>(std::make_shared<NoSecrets>()),
                                                     orvane::makeSerialQueue(), mainQueue),
      .srvRecordsBrowser = std::make_shared<OvNetServiceBrowser>(),
      .launcher = launcher,
      .mainQueue = mainQueue,
      .globalQueue = globalQueue});
  const auto farm = std::make_shared<OvFarm>();
  logOn(*farm->brokerClient());
  for ([[maybe_unused]] auto _ : state) {
    const int64_t begin = nanoseconds();
    controller->launchApp(farm, OvLocation::location(), "Word", [](const OvError* error) {
      if (error) throw std::runtime_error(error->description);
    });
    state.SetIterationTime(static_cast<double>(surroundings.started() - begin) * 1e-9);
  }
}
BENCHMARK_CAPTURE(launchToMain, inMemory, "/dev/shm")->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(launchToMain, onDisk, "/tmp")->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int count, char** arguments) {
  benchmark::Initialize(&count, arguments);
  benchmark::RunSpecifiedBenchmarks();
  orvane::endProcess(0);  // threads of queues may still run
}

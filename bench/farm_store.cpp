// Saving and loading a store of 100 farms with 3 locations each, as bytes in memory and as a file on disk, against
// Python's plistlib, which reads and writes the property list alone.

#include <cstdio>
#include <fstream>
#include <string>

#include <benchmark/benchmark.h>
#include <stdlib.h>
#include <unistd.h>

#include "Model/OvFarmManager.h"
#include "Support/FileReplacement.h"

namespace {

std::shared_ptr<OvFarm> farmNumber(int64_t number) {
  auto farm = std::make_shared<OvFarm>();
  farm->setName("Harbour works " + std::to_string(number));
  farm->setFarmDBGUID("{B7A1F5D2-3C64-4F0E-9C5D-" + std::to_string(100000000000 + number) + "}");
  farm->credentials().setUsername("user" + std::to_string(number));
  farm->credentials().setDomain("HAFENWERK");
  farm->credentials().setNeedToSave(true);
  farm->autoLaunchApps() = {"Mail", "Calendar"};
  for (const char* site : {"Head office", "Branch", "Home"}) {
    auto location = OvLocation::location();
    location->setName(site);
    location->setBrokers({"broker1.farm" + std::to_string(number) + ".example", "broker2.example"});
    farm->addLocation(location);
  }
  return farm;
}

OvFarmManager managerWith(int64_t farms) {
  OvFarmManager manager("", nullptr, nullptr, nullptr);
  for (int64_t number = 0; number < farms; ++number) manager.addFarm(farmNumber(number));
  return manager;
}

void saveAndLoad(benchmark::State& state) {
  OvFarmManager manager = managerWith(state.range(0));
  size_t size = 0;
  for (auto _ : state) {
    const std::vector<uint8_t> data = manager.saveToData();
    if (!manager.loadFromData(data)) state.SkipWithError("not loaded");
    size = data.size();
  }
  state.counters["bytes"] = static_cast<double>(size);
}

void save(benchmark::State& state) {
  const OvFarmManager manager = managerWith(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(manager.saveToData());
}

void load(benchmark::State& state) {
  OvFarmManager manager = managerWith(state.range(0));
  const std::vector<uint8_t> data = manager.saveToData();
  for (auto _ : state) {
    if (!manager.loadFromData(data)) state.SkipWithError("not loaded");
  }
}

// What plistlib takes to parse the same bytes and to write them again, as it measures itself.
void plistlib(benchmark::State& state) {
  char path[] = "/tmp/orvane-bench-XXXXXX";
  const int file = mkstemp(path);
  const std::vector<uint8_t> data = managerWith(state.range(0)).saveToData();
  if (file < 0 || !orvane::replaceFile(path, data.data(), data.size())) return state.SkipWithError("no file");
  const std::string command = "/usr/bin/python3 -c \"import plistlib,time; data=open('" + std::string(path) +
                              "','rb').read(); start=time.perf_counter()\n"
                              "for i in range(5): plistlib.dumps(plistlib.loads(data),fmt=plistlib.FMT_BINARY)\n"
                              "print((time.perf_counter()-start)/5)\"";
  for (auto _ : state) {
    FILE* python = popen(command.c_str(), "r");
    double seconds = 0;
    if (python == nullptr || fscanf(python, "%lf", &seconds) != 1) state.SkipWithError("no python3");
    if (python != nullptr) pclose(python);
    state.SetIterationTime(seconds);
  }
  unlink(path);
}

BENCHMARK(saveAndLoad)->Arg(100)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(save)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(load)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(plistlib)->Arg(100)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

}  // namespace

// The farm store's archive: as many farms as the argument says, each with three locations, written and read as a store
// would.

#include <string>

#include <benchmark/benchmark.h>

#include "Platform/KeyedArchive.h"

namespace {

using orvane::KeyedArchiver;
using orvane::KeyedObject;

struct Part {
  const char* key;
  const char* className;
  std::vector<std::string> integers;
  std::vector<std::string> switches;
};

const Part kParts[] = {
    {"credentials", "OvCredentials", {}, {"disableUserDomain", "doSave", "credentialsAreValid"}},
    {"displaySettings",
     "OvDisplay",
     {"color", "height", "width", "customWidth", "customHeight"},
     {"fullscreen", "seamless", "spanMonitors"}},
    {"resources",
     "OvResources",
     {"sound", "keyboard"},
     {"doRedirectDiskDrives", "doRedirectSerialPorts", "doRedirectParallelPorts", "doRedirectClipboard",
      "doRedirectPrinters", "doRedirectSmartcards"}},
    {"performance",
     "OvPerformance",
     {"connectionSpeed"},
     {"doUseBitmapCaching", "doShowDesktopBackground", "doUseAnimation", "doShowWindowContent", "doUseThemes",
      "doUseFontSmoothing", "doUseGA", "doFlashMMR", "doUseSurge", "doUseDesktopComposition"}},
};
const std::vector<std::string> kFarmTexts = {
    "farmName",        "farmDBGUID",      "configName",           "configDBGUID",
    "configTimestamp", "userDescription", "prefferedLocationName"};
const std::vector<std::string> kFarmSwitches = {"doAutoLaunch", "doReconnect", "serverCreated",
                                                "disallowSaveCredentials", "anonymousLogin"};
const std::vector<std::string> kLocationTexts = {"name",       "proxyServer", "exclusiveServers",
                                                 "sslGateway", "port",        "protocol"};
const std::vector<std::string> kLocationSwitches = {"doUseNatSupport", "doUseSsl", "doAskBeforeUsing"};

std::vector<uint8_t> write(size_t farms) {
  KeyedArchiver archiver;
  archiver.encodeDictionary("root", [&](KeyedArchiver& root) {
    root.encodeObjects("m_connections", "OvFarm", farms, [](KeyedArchiver& farm, size_t index) {
      const std::string number = std::to_string(index);
      for (const std::string& key : kFarmTexts) farm.encodeString(key, "value of " + number);
      for (const std::string& key : kFarmSwitches) farm.encodeBool(key, index % 2 == 0);
      farm.encodeInteger("defaultLocationIndex", 0);
      for (const Part& part : kParts) {
        farm.encodeObject(part.key, part.className, [&](KeyedArchiver& record) {
          for (const std::string& key : part.integers) record.encodeInteger(key, 800);
          for (const std::string& key : part.switches) record.encodeBool(key, true);
        });
      }
      farm.encodeObjects("locations", "OvLocation", 3, [&](KeyedArchiver& location, size_t) {
        for (const std::string& key : kLocationTexts) location.encodeString(key, "host-" + number + ".example.test");
        for (const std::string& key : kLocationSwitches) location.encodeBool(key, false);
        location.encodeInteger("proxyServerMode", 0);
        location.encodeStrings("brokers", {"broker-1." + number, "broker-2." + number});
      });
      farm.encodeStrings("apps", {"Word", "Mail"});
    });
    root.encodeNumber("m_autolaunchedFarmIndex", 4294967295);
  });
  return archiver.finish();
}

size_t readFields(const KeyedObject& object, const std::vector<std::string>& texts,
                  const std::vector<std::string>& integers, const std::vector<std::string>& switches) {
  size_t read = 0;
  for (const std::string& key : texts) read += object.string(key).value().size();
  for (const std::string& key : integers) read += object.integer(key).has_value();
  for (const std::string& key : switches) read += object.boolean(key).has_value();
  return read;
}

size_t read(const std::vector<uint8_t>& bytes) {
  const KeyedObject root = orvane::openKeyedArchive(bytes).dictionary("root").value();
  size_t read = 0;
  const std::vector<KeyedObject> farms = root.objects("m_connections", "OvFarm").value();
  for (const KeyedObject& farm : farms) {
    read += readFields(farm, kFarmTexts, {"defaultLocationIndex"}, kFarmSwitches) + farm.strings("apps")->size();
    for (const Part& part : kParts) {
      read += readFields(farm.object(part.key, part.className).value(), {}, part.integers, part.switches);
    }
    const std::vector<KeyedObject> locations = farm.objects("locations", "OvLocation").value();
    for (const KeyedObject& location : locations) {
      read += readFields(location, kLocationTexts, {"proxyServerMode"}, kLocationSwitches);
      read += location.strings("brokers")->size();
    }
  }
  return read;
}

void writeFarms(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(write(static_cast<size_t>(state.range(0))));
}

void openFarms(benchmark::State& state) {
  const std::vector<uint8_t> bytes = write(static_cast<size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(orvane::openKeyedArchive(bytes));
  state.counters["bytes"] = static_cast<double>(bytes.size());
}

void openAndReadFarms(benchmark::State& state) {
  const std::vector<uint8_t> bytes = write(static_cast<size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(read(bytes));
}

}  // namespace

BENCHMARK(writeFarms)->Arg(100)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(openFarms)->Arg(100)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(openAndReadFarms)->Arg(100)->Arg(10000)->Unit(benchmark::kMillisecond);

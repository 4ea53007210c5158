#include <string>

#include <benchmark/benchmark.h>
#include <stdlib.h>
#include <unistd.h>

#include "Crypto/crypto.h"
#include "Files/LaunchFileWriter.h"
#include "Files/OvSettings.h"
#include "Files/OvSettingsData.h"

namespace {

// A record as a broker's answer and the preferences fill it.
OvSettingsData* typicalRecord() {
  OvSettingsData* const record = ovsettings_new();
  ovsettings_set_server_name(record, "TERMINAL-7");
  ovsettings_set_server_addr(record, "10.20.30.47");
  ovsettings_set_connecting_text(record, "Accounting");
  ovsettings_set_program_full_path(record,
                                   "\"C:\\Program Files\\Accounting\\accounting.exe\" /profile:\"%USERPROFILE%\"");
  ovsettings_set_program_working_dir(record, "C:\\Program Files\\Accounting");
  ovsettings_set_farm_name(record, "Head office");
  ovsettings_set_ssl_gateway(record, "gateway.example.test:443");
  ovsettings_set_proxy_server(record, "proxy.example.test:8080");
  ovsettings_set_proxy_bypass(record, "*.example.test;10.*");
  ovsettings_set_domain(record, "EXAMPLE");
  ovsettings_set_username(record, "ann");
  ovsettings_set_password(record, "correct horse battery staple");
  ovsettings_set_broker_servers(record, "broker-1.example.test;broker-2.example.test");
  ovsettings_set_desktop_width(record, 1920);
  ovsettings_set_desktop_height(record, 1080);
  return record;
}

void writeText(benchmark::State& state) {
  OvSettingsData* const record = typicalRecord();
  for ([[maybe_unused]] auto _ : state) {
    std::string text;
    benchmark::DoNotOptimize(orvane::writeLaunchDocument(*record, text));
  }
  ovsettings_free(record);
}
BENCHMARK(writeText);

void loadBuffer(benchmark::State& state) {
  OvSettingsData* const record = typicalRecord();
  std::string text;
  orvane::writeLaunchDocument(*record, text);
  const std::string container = orvane::encipheredContainer(text);
  for ([[maybe_unused]] auto _ : state) ovsettings_load_ovl_buffer(record, container.data(), container.size());
  state.counters["bytes"] = static_cast<double>(container.size());
  ovsettings_free(record);
}
BENCHMARK(loadBuffer);

void saveAndLoadInMemory(benchmark::State& state) {
  OvSettingsData* const record = typicalRecord();
  OvSettingsData* const loaded = ovsettings_new();
  for ([[maybe_unused]] auto _ : state) {
    std::string text;
    orvane::writeLaunchDocument(*record, text);
    const std::string container = orvane::encipheredContainer(text);
    ovsettings_load_ovl_buffer(loaded, container.data(), container.size());
  }
  ovsettings_free(loaded);
  ovsettings_free(record);
}
BENCHMARK(saveAndLoadInMemory);

// Saving brings the file to disk before it returns: this is the disk's time above all.
void saveAndLoadFile(benchmark::State& state) {
  char path[] = "/tmp/orvane-bench-XXXXXX";
  close(mkstemp(path));
  OvSettingsData* const record = typicalRecord();
  OvSettingsData* const loaded = ovsettings_new();
  for ([[maybe_unused]] auto _ : state) {
    ovsettings_save_ovl_file(record, path);
    ovsettings_load_ovl_file(loaded, path);
  }
  ovsettings_free(loaded);
  ovsettings_free(record);
  unlink(path);
}
BENCHMARK(saveAndLoadFile)->UseRealTime();

// A foreign document of many lines that all name a key: time in proportion to its size.
void loadLargeDocument(benchmark::State& state) {
  std::string document;
  while (document.size() < static_cast<size_t>(state.range(0))) document += "desktopwidth:i:1\nUSERNAME:u:a%%b\n";
  OvSettingsData* const record = ovsettings_new();
  for ([[maybe_unused]] auto _ : state) ovsettings_load_ovl_buffer(record, document.data(), document.size());
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(document.size()));
  ovsettings_free(record);
}
BENCHMARK(loadLargeDocument)->Arg(1 << 16)->Arg(1 << 20)->Arg(1 << 24);

}  // namespace

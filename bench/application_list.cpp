// getApplicationList of 1,000 applications with icons from the demo broker, beside libcurl fetching the same answer
// into memory, and into nothing, over a connection of the same kind.

#include <memory>

#include <benchmark/benchmark.h>
#include <curl/curl.h>

#include "Broker/OvBrokerClient.h"
#include "demo-broker/DemoBroker.h"

namespace {

using orvane::demo::Application;
using orvane::demo::DemoBroker;
using orvane::demo::FarmDescription;
using orvane::demo::Icon;

constexpr size_t kApplications = 1000;

FarmDescription largeFarm() {
  // 32 x 32 and 16 x 16 pixels at 32 bits, as hexadecimal; what they show is never looked at here.
  const auto icon =
      std::make_shared<Icon>(Icon{std::string(2 * (116 + 128 + 4096), 'A'), std::string(2 * (116 + 32 + 1024), 'B')});
  FarmDescription farm;
  farm.anonymousAllowed = true;
  for (size_t i = 0; i < kApplications; ++i) {
    const std::string number = std::to_string(i);
    farm.applications.push_back({.name = "application" + number,
                                 .shortcut = "Application " + number,
                                 .path = "C:\\Program Files\\Vendor\\application" + number + ".exe",
                                 .workingDirectory = "C:\\Users",
                                 .folder = "Office\\Folder " + std::to_string(i % 50),
                                 .icon = icon});
  }
  return farm;
}

DemoBroker& broker() {
  static DemoBroker broker(largeFarm());
  return broker;
}

void listApplications(benchmark::State& state) {
  OvBrokerClient client;
  client.setURL(broker().url());
  client.getBrokerInfo();
  for (auto _ : state) {
    if (client.getApplicationList().size() != kApplications) state.SkipWithError("wrong count");
  }
}

size_t collect(char* bytes, size_t size, size_t count, void* text) {
  static_cast<std::string*>(text)->append(bytes, size * count);
  return size * count;
}

size_t discard(char*, size_t size, size_t count, void*) { return size * count; }

void fetch(benchmark::State& state, curl_write_callback callback) {
  OvBrokerClient client;
  client.setURL(broker().url());
  client.getBrokerInfo();
  client.getApplicationList();
  const std::string body = broker().requests("getapplicationlist").back().body;  // with a cookie that is good

  const std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> handle(curl_easy_init(), &curl_easy_cleanup);
  const std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)> headers(
      curl_slist_append(nullptr, "Content-Type: text/xml"), &curl_slist_free_all);
  const std::string url = broker().url() + "/";
  for (auto _ : state) {
    std::string response;
    curl_easy_setopt(handle.get(), CURLOPT_URL, url.c_str());
    curl_easy_setopt(handle.get(), CURLOPT_POSTFIELDS, body.c_str());
    curl_easy_setopt(handle.get(), CURLOPT_HTTPHEADER, headers.get());
    curl_easy_setopt(handle.get(), CURLOPT_WRITEFUNCTION, callback);
    curl_easy_setopt(handle.get(), CURLOPT_WRITEDATA, &response);
    if (curl_easy_perform(handle.get()) != CURLE_OK) state.SkipWithError("no answer");
    curl_off_t size = 0;
    curl_easy_getinfo(handle.get(), CURLINFO_SIZE_DOWNLOAD_T, &size);
    state.counters["bytes"] = static_cast<double>(size);
  }
}

BENCHMARK(listApplications)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(fetch, intoMemory, collect)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(fetch, intoNothing, discard)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

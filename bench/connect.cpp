// A whole connect to a farm of 1,000 applications with icons, from the click until the delegate has the tree, beside
// libcurl making the same five exchanges with the same broker and nothing else. Then its parts, and its memory.

#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <new>

#include <benchmark/benchmark.h>
#include <curl/curl.h>
#include <malloc.h>

#include "Support/IconStrings.h"
#include "src/Orchestration/FlowFixture.h"

namespace {

// Live bytes of all of the program's objects, the broker's too, since counting began.
std::atomic<bool> isCounting = false;
std::atomic<int64_t> liveBytes = 0;
std::atomic<int64_t> peakBytes = 0;

void count(int64_t bytes) {
  const int64_t live = liveBytes.fetch_add(bytes) + bytes;
  int64_t peak = peakBytes;
  while (live > peak && !peakBytes.compare_exchange_weak(peak, live)) {
  }
}

}  // namespace

void* operator new(size_t size) {
  void* const memory = malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  if (isCounting) count(static_cast<int64_t>(malloc_usable_size(memory)));
  return memory;
}
void operator delete(void* memory) noexcept {
  if (isCounting && memory != nullptr) count(-static_cast<int64_t>(malloc_usable_size(memory)));
  free(memory);
}
void operator delete(void* memory, size_t) noexcept { operator delete(memory); }

namespace {

using Clock = std::chrono::steady_clock;
using orvane::demo::DemoBroker;

constexpr size_t kApplications = 1000;
constexpr std::array kMessages = {"brokerinfo", "authenticate", "getconnectorinfo", "getfarmproperties",
                                  "getapplicationlist"};

std::string icon(uint32_t side) {
  return icon_strings::make({side, side, std::vector<uint8_t>(size_t{side} * side * 4, 0x5a)}, 32);
}

orvane::demo::FarmDescription largeFarm() {
  const auto icons = std::make_shared<const orvane::demo::Icon>(orvane::demo::Icon{icon(32), icon(16)});
  orvane::demo::FarmDescription farm;
  farm.users = {{.name = "ann", .password = "secret"}};
  for (size_t i = 0; i < kApplications; ++i) {
    const std::string number = std::to_string(i);
    farm.applications.push_back({.name = "application" + number,
                                 .shortcut = "Application " + number,
                                 .path = "C:\\Program Files\\Vendor\\application" + number + ".exe",
                                 .workingDirectory = "C:\\Users",
                                 .folder = "Office\\Folder " + std::to_string(i % 50),
                                 .icon = icons});
  }
  return farm;
}

class Program : public FlowFixture {
 public:
  Program()
      : broker(largeFarm(), {.onRequest = [this](const auto& request) {
                 const auto place = std::find(kMessages.begin(), kMessages.end(), request.message);
                 if (place != kMessages.end()) arrivals[static_cast<size_t>(place - kMessages.begin())] = Clock::now();
               }}) {
    location->setBrokers({"127.0.0.1"});
    location->setPort(broker.port());
    farm->addLocation(location);
    farm->credentials().setUsername("ann");
    farm->credentials().setPassword("secret");
    farm->credentials().setCredentialsAreValid(true);
    manager->addFarm(farm);
    delegate->onEvent = [this](const std::string& event) {
      if (event == "applications") mainQueue->post([this] { hasApplications = true; });
    };
  }

  void prepare() {
    delegate->applications.reset();
    hasApplications = false;
    farm->resetBrokerClient();
    OvBrokerClientController::configureBrokerClient(*farm->brokerClient(), &farm->credentials(), false, location.get());
  }
  bool connect() {
    controller->connectToFarm(farm, location, delegate);
    return mainQueue->pumpUntil([this] { return hasApplications; });
  }
  bool refresh() {
    hasApplications = false;
    controller->getApplicationListForFarm(farm, delegate);
    return mainQueue->pumpUntil([this] { return hasApplications; });
  }

  DemoBroker broker;
  std::array<Clock::time_point, kMessages.size()> arrivals{};  // of the last request of each kind
  const std::shared_ptr<OvFarm> farm = std::make_shared<OvFarm>();
  const std::shared_ptr<OvLocation> location = std::make_shared<OvLocation>();
  bool hasApplications = false;
};

Program& program() {
  static Program program;
  return program;
}

// With the milliseconds from each request's arrival to the next; the last ends with the tree.
void connect(benchmark::State& state) {
  Program& flow = program();
  std::array<double, kMessages.size() + 1> stages{};
  for (auto _ : state) {
    state.PauseTiming();
    flow.prepare();
    state.ResumeTiming();
    const auto start = Clock::now();
    if (!flow.connect()) state.SkipWithError("no applications");
    const auto end = Clock::now();
    for (size_t i = 0; i <= kMessages.size(); ++i) {
      const std::chrono::duration<double, std::milli> stage =
          (i == kMessages.size() ? end : flow.arrivals[i]) - (i == 0 ? start : flow.arrivals[i - 1]);
      stages[i] += stage.count();
    }
  }
  for (size_t i = 0; i <= kMessages.size(); ++i) {
    state.counters[i == 0 ? "before" : kMessages[i - 1]] =
        benchmark::Counter(stages[i], benchmark::Counter::kAvgIterations);
  }
}

void refresh(benchmark::State& state) {
  program().prepare();
  program().connect();
  for (auto _ : state) {
    if (!program().refresh()) state.SkipWithError("no applications");
  }
}

// What of a refresh is the protocol's: fetching the answer and reading it.
void getApplicationList(benchmark::State& state) {
  program().prepare();
  program().connect();
  for (auto _ : state) {
    if (program().farm->brokerClient()->getApplicationList().size() != kApplications) state.SkipWithError("count");
  }
}

void saveFarms(benchmark::State& state) {
  for (auto _ : state) {
    program().manager->save();
    program().mainQueue->pump();
  }
}

size_t collect(char* bytes, size_t size, size_t items, void* text) {
  static_cast<std::string*>(text)->append(bytes, size * items);
  return size * items;
}

// The same exchanges over a handle of their own: the recorded requests of a connect, with cookies that are still good.
void libcurl(benchmark::State& state) {
  program().prepare();
  program().connect();
  std::vector<orvane::demo::RecordedRequest> requests;
  for (const char* message : kMessages) requests.push_back(program().broker.requests(message).back());
  std::vector<std::string> urls;
  for (const auto& request : requests) urls.push_back(program().broker.url() + request.target);
  const std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)> headers(
      curl_slist_append(nullptr, "Content-Type: text/xml"), &curl_slist_free_all);
  for (auto _ : state) {
    const std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> handle(curl_easy_init(), &curl_easy_cleanup);
    for (size_t i = 0; i < requests.size(); ++i) {
      std::string response;
      curl_easy_setopt(handle.get(), CURLOPT_URL, urls[i].c_str());
      if (requests[i].method == "GET") {
        curl_easy_setopt(handle.get(), CURLOPT_HTTPGET, 1L);
      } else {
        curl_easy_setopt(handle.get(), CURLOPT_POSTFIELDS, requests[i].body.c_str());
        curl_easy_setopt(handle.get(), CURLOPT_HTTPHEADER, headers.get());
      }
      curl_easy_setopt(handle.get(), CURLOPT_WRITEFUNCTION, collect);
      curl_easy_setopt(handle.get(), CURLOPT_WRITEDATA, &response);
      if (curl_easy_perform(handle.get()) != CURLE_OK) state.SkipWithError("no answer");
      state.counters["listBytes"] = static_cast<double>(response.size());
    }
  }
}

// The most that a connect holds at a time. What the broker takes to answer counts too.
void memoryOfConnect(benchmark::State& state) {
  for (auto _ : state) {
    program().prepare();
    liveBytes = peakBytes = 0;
    isCounting = true;
    if (!program().connect()) state.SkipWithError("no applications");
    isCounting = false;
  }
  state.counters["peakBytes"] = static_cast<double>(peakBytes);
  state.counters["heldBytes"] = static_cast<double>(liveBytes);
}

BENCHMARK(connect)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(libcurl)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(refresh)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(getApplicationList)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(saveFarms)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(memoryOfConnect)->Iterations(1)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

}  // namespace

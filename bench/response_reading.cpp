// Reading the eleven fields of 10,000 listed applications and keeping them, beside pugixml parsing the same bytes and
// reading none of them.

#include <memory>
#include <pugixml.hpp>
#include <string>

#include <benchmark/benchmark.h>

#include "Broker/OvBrokerClient.h"
#include "Http/HttpClient.h"

namespace {

constexpr int kApplications = 10000;

// An icon of 32 x 32 pixels at 32 bits with its mask, as a broker sends it: 108 bytes of headers, then the bits.
std::string iconString() {
  constexpr size_t kBytes = 116 + 32 * 32 / 8 + 32 * 32 * 4;
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text(2 * kBytes, '0');
  for (size_t i = 0; i < text.size(); ++i) text[i] = kDigits[(i * 7 + i / 13) % 16];
  return text;
}

const std::string& response() {
  static const std::string text = [] {
    const std::string icon = iconString();
    std::string list = "<getapplicationlist-rsp><errorcode>0</errorcode>";
    for (int i = 0; i < kApplications; ++i) {
      const std::string number = std::to_string(i);
      list += "<application><name>application" + number + "</name><shortcut>Application &amp; " + number +
              "</shortcut><path>C:\\Program Files\\Vendor\\app" + number + ".exe</path><arguments>/open</arguments>" +
              "<workingdir>C:\\Users</workingdir><largeicon>" + icon + "</largeicon><smallicon>" + icon +
              "</smallicon><showcmd>1</showcmd><foldername>Office\\Folder" + std::to_string(i % 50) +
              "</foldername><apptype>1</apptype><desktopshortcutlocation>0</desktopshortcutlocation></application>";
    }
    return list + "</getapplicationlist-rsp>";
  }();
  return text;
}

// Answers without a network; a list with what was put there for it.
class AnsweringClient : public HttpClient {
 public:
  explicit AnsweringClient(std::string& list) : list_(list) {}
  std::string sendRequest(const std::string&, const std::string* content) override {
    if (content->find("<authenticate-req>") != std::string::npos)
      return "<authenticate-rsp><cookie>c</cookie></authenticate-rsp>";
    return std::move(list_);
  }

 private:
  std::string& list_;
};

// Each has a copy of the response of its own to work on. Making it and freeing what came of it isn't measured.
void readApplications(benchmark::State& state) {
  std::string answer;
  OvBrokerClient client(std::make_unique<AnsweringClient>(answer));
  client.setServer("host");
  for (auto _ : state) {
    state.PauseTiming();
    answer = response();
    state.ResumeTiming();
    auto applications = client.getApplicationList();
    if (applications.size() != kApplications) state.SkipWithError("wrong count");
    state.PauseTiming();
    applications.clear();
    state.ResumeTiming();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(response().size()));
}

template <typename Parse>
void parseWithPugixml(benchmark::State& state, Parse parse) {
  for (auto _ : state) {
    state.PauseTiming();
    std::string answer = response();
    auto document = std::make_unique<pugi::xml_document>();
    state.ResumeTiming();
    if (!parse(*document, answer)) state.SkipWithError("not parsed");
    state.PauseTiming();
    document.reset();
    answer = std::string();
    state.ResumeTiming();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(response().size()));
}

const auto kLoadBuffer = [](pugi::xml_document& document, std::string& text) {
  return document.load_buffer(text.data(), text.size());
};
const auto kLoadBufferInPlace = [](pugi::xml_document& document, std::string& text) {
  return document.load_buffer_inplace(text.data(), text.size());
};

BENCHMARK(readApplications)->Unit(benchmark::kMillisecond)->Setup([](const benchmark::State&) { response(); });
BENCHMARK_CAPTURE(parseWithPugixml, load_buffer, kLoadBuffer)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(parseWithPugixml, load_buffer_inplace, kLoadBufferInPlace)->Unit(benchmark::kMillisecond);

}  // namespace

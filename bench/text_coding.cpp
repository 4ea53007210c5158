#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>
#include <iconv.h>

#include "Support/TextCoding.h"

namespace {

constexpr size_t kSize = 1 << 20;

// One megabyte with an accented letter every `distance` bytes; 0 for none.
std::string singleByteText(int64_t distance) {
  std::string text(kSize, 'x');
  if (distance > 0) {
    for (size_t i = 0; i < text.size(); i += static_cast<size_t>(distance)) text[i] = '\xE9';
  }
  return text;
}

void toUtf8(benchmark::State& state) {
  const std::string text = singleByteText(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(orvane::cp1252ToUtf8(text));
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}

void fromUtf8(benchmark::State& state) {
  const std::string text = orvane::cp1252ToUtf8(singleByteText(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(orvane::utf8ToCp1252(text));
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}

void byIconv(benchmark::State& state, const std::string& text, const char* to, const char* from) {
  const iconv_t converter = iconv_open(to, from);
  if (converter == reinterpret_cast<iconv_t>(-1)) throw std::runtime_error("no such conversion");
  for (auto _ : state) {
    std::string result(text.size() * 2, '\0');
    char* in = const_cast<char*>(text.data());
    char* out = result.data();
    size_t inLeft = text.size();
    size_t outLeft = result.size();
    iconv(converter, &in, &inLeft, &out, &outLeft);
    result.resize(result.size() - outLeft);
    benchmark::DoNotOptimize(result);
  }
  iconv_close(converter);
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}

void toUtf8ByIconv(benchmark::State& state) { byIconv(state, singleByteText(state.range(0)), "UTF-8", "ISO-8859-1"); }

void fromUtf8ByIconv(benchmark::State& state) {
  byIconv(state, orvane::cp1252ToUtf8(singleByteText(state.range(0))), "ISO-8859-1", "UTF-8");
}

}  // namespace

BENCHMARK(toUtf8)->Arg(0)->Arg(20)->Arg(1);
BENCHMARK(toUtf8ByIconv)->Arg(0)->Arg(20)->Arg(1);
BENCHMARK(fromUtf8)->Arg(0)->Arg(20)->Arg(1);
BENCHMARK(fromUtf8ByIconv)->Arg(0)->Arg(20)->Arg(1);

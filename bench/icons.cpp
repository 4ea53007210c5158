// A catalogue's icons, from the broker's strings to PNG, beside what libpng alone takes for the same pixels.
#include <cstdlib>
#include <random>

#include <benchmark/benchmark.h>
#include <png.h>

#include "../tests/Support/IconStrings.h"
#include "Support/ico2png.h"

namespace {

constexpr size_t kIcons = 1000;

// Icons as people draw them: a shaded disc with a little noise, and nothing around it.
IconPicture drawnIcon(uint32_t seed) {
  std::mt19937 random(seed);
  IconPicture picture{32, 32, {}};
  const auto red = static_cast<unsigned>(random() % 200);
  const auto green = static_cast<unsigned>(random() % 200);
  for (int y = 0; y < 32; ++y) {
    for (int x = 0; x < 32; ++x) {
      const bool isInside = (x - 16) * (x - 16) + (y - 16) * (y - 16) < 15 * 15;
      const unsigned noise = random() % 8;
      const unsigned channels[] = {red + static_cast<unsigned>(x) + noise, green + static_cast<unsigned>(y) + noise,
                                   static_cast<unsigned>(x + y) * 3, 255};
      for (const unsigned channel : channels) picture.rgba.push_back(isInside ? static_cast<uint8_t>(channel) : 0);
    }
  }
  return picture;
}

struct Catalogue {
  std::vector<std::string> strings;
  std::vector<IconImage> images;
};

const Catalogue& catalogue() {
  static const Catalogue icons = [] {
    Catalogue made;
    for (uint32_t seed = 0; seed < kIcons; ++seed) {
      made.strings.push_back(icon_strings::make(drawnIcon(seed), 32));
      made.images.push_back(ico2png_decode_icon_string(made.strings.back()).value());
    }
    return made;
  }();
  return icons;
}

void appendBytes(png_structp png, png_bytep bytes, size_t size) {
  auto* const file = static_cast<std::vector<uint8_t>*>(png_get_io_ptr(png));
  file->insert(file->end(), bytes, bytes + size);
}

std::vector<uint8_t> libpngAlone(const IconImage& image) {
  std::vector<uint8_t> file;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_set_write_fn(png, &file, appendBytes, nullptr);
  png_set_IHDR(png, info, image.width, image.height, 8, PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_write_info(png, info);
  for (size_t row = 0; row < image.height; ++row) png_write_row(png, image.rgba.data() + row * image.width * 4);
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
  return file;
}

void report(benchmark::State& state, size_t bytes) {
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(kIcons));
  state.counters["bytes of an icon"] = static_cast<double>(bytes / kIcons);
}

void pngByLibpngAlone(benchmark::State& state) {
  size_t bytes = 0;
  for (auto _ : state) {
    bytes = 0;
    for (const IconImage& image : catalogue().images) bytes += libpngAlone(image).size();
  }
  report(state, bytes);
}

using Converter = decltype(ico2png_convert_icon_string_to_png_buffer);

void convertAll(benchmark::State& state, Converter convert) {
  size_t bytes = 0;
  for (auto _ : state) {
    bytes = 0;
    for (const std::string& string : catalogue().strings) {
      unsigned char* buffer = nullptr;
      unsigned int size = 0;
      if (!convert(string.c_str(), &buffer, &size)) state.SkipWithError("refused");
      bytes += size;
      free(buffer);
    }
  }
  report(state, bytes);
}

void decodeAlone(benchmark::State& state) {
  for (auto _ : state) {
    for (const std::string& string : catalogue().strings) {
      benchmark::DoNotOptimize(ico2png_decode_icon_string(string));
    }
  }
  report(state, catalogue().strings.size() * 32 * 32 * 4);
}

BENCHMARK(pngByLibpngAlone)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(convertAll, toPng, ico2png_convert_icon_string_to_png_buffer)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(convertAll, toIco, ico2png_convert_icon_string_to_ico_buffer)->Unit(benchmark::kMillisecond);
BENCHMARK(decodeAlone)->Unit(benchmark::kMillisecond);

}  // namespace

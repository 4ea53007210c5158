#include "IconStrings.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include <png.h>

namespace orvane::demo {
namespace {

constexpr uint32_t kLargestSide = 1024;
constexpr uint32_t kHeaderSize = 40;

struct Pixel {
  uint8_t red, green, blue, alpha;
};

struct Picture {
  uint32_t width = 0;
  uint32_t height = 0;
  std::vector<Pixel> pixels;  // row by row from the top
};

Picture readPng(std::string_view png) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  Picture picture;
  if (png_image_begin_read_from_memory(&image, png.data(), png.size())) {
    image.format = PNG_FORMAT_RGBA;
    picture.width = image.width;
    picture.height = image.height;
    if (image.width > kLargestSide || image.height > kLargestSide) {
      png_image_free(&image);
      throw std::runtime_error("the picture is larger than 1024 x 1024");
    }
    picture.pixels.resize(size_t{image.width} * image.height);
    png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr);
  }
  if (PNG_IMAGE_FAILED(image)) throw std::runtime_error(std::string("no PNG picture: ") + image.message);
  return picture;
}

/// The mean of the source pixels that fall into a target pixel (or the nearest one), weighted by their opacity so that
/// the unseen colour of transparent ones doesn't show at the edges.
Pixel meanOf(const Picture& picture, uint32_t left, uint32_t top, uint32_t right, uint32_t bottom) {
  uint64_t red = 0, green = 0, blue = 0, alpha = 0, count = 0;
  for (uint32_t y = top; y < bottom; ++y) {
    for (uint32_t x = left; x < right; ++x, ++count) {
      const Pixel& pixel = picture.pixels[size_t{y} * picture.width + x];
      red += uint64_t{pixel.red} * pixel.alpha;
      green += uint64_t{pixel.green} * pixel.alpha;
      blue += uint64_t{pixel.blue} * pixel.alpha;
      alpha += pixel.alpha;
    }
  }
  const auto mean = [](uint64_t sum, uint64_t weight) {
    return static_cast<uint8_t>(weight == 0 ? 0 : (sum + weight / 2) / weight);
  };
  return {mean(red, alpha), mean(green, alpha), mean(blue, alpha), mean(alpha, count)};
}

Picture scaled(const Picture& picture, uint32_t side) {
  Picture result{side, side, {}};
  result.pixels.reserve(size_t{side} * side);
  for (uint32_t y = 0; y < side; ++y) {
    const uint32_t top = y * picture.height / side;
    const uint32_t bottom = std::max(top + 1, (y + 1) * picture.height / side);
    for (uint32_t x = 0; x < side; ++x) {
      const uint32_t left = x * picture.width / side;
      const uint32_t right = std::max(left + 1, (x + 1) * picture.width / side);
      result.pixels.push_back(meanOf(picture, left, top, right, bottom));
    }
  }
  return result;
}

class HexadecimalWriter {
 public:
  void byte(uint8_t value) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    text_ += kDigits[value >> 4];
    text_ += kDigits[value & 15];
  }
  void word(uint32_t value, int bits = 32) {
    for (int shift = bits - 8; shift >= 0; shift -= 8) byte(static_cast<uint8_t>(value >> shift));
  }
  void bitmapHeader(uint32_t side, uint32_t bitsPerPixel, uint32_t imageSize) {
    for (const uint32_t value : {kHeaderSize, side, side}) word(value);
    word(1, 16);
    word(bitsPerPixel, 16);
    for (const uint32_t value : {0u, imageSize, 0u, 0u, 0u, 0u}) word(value);
    // Room for two colours, which icons of 32 bits don't have.
    word(0);
    word(0);
  }
  std::string take() { return std::move(text_); }

 private:
  std::string text_;
};

std::string iconString(const Picture& picture) {
  const uint32_t side = picture.width;
  const uint32_t maskSize = side * side / 8;
  const uint32_t colorSize = side * side * 4;
  HexadecimalWriter writer;
  for (const uint32_t value : {1u, side / 2, side / 2, maskSize, colorSize}) writer.word(value);

  const auto row = [&](uint32_t fromBottom) { return &picture.pixels[size_t{side - 1 - fromBottom} * side]; };
  writer.bitmapHeader(side, 1, maskSize);
  for (uint32_t y = 0; y < side; ++y) {
    for (uint32_t x = 0; x < side; x += 8) {
      uint8_t bits = 0;
      for (uint32_t bit = 0; bit < 8; ++bit) bits = static_cast<uint8_t>(bits << 1 | (row(y)[x + bit].alpha < 128));
      writer.byte(bits);
    }
  }
  writer.bitmapHeader(side, 32, colorSize);
  for (uint32_t y = 0; y < side; ++y) {
    for (uint32_t x = 0; x < side; ++x) {
      const Pixel& pixel = row(y)[x];
      for (const uint8_t value : {pixel.blue, pixel.green, pixel.red, pixel.alpha}) writer.byte(value);
    }
  }
  return writer.take();
}

}  // namespace

Icon iconFromPng(std::string_view png) {
  const Picture picture = readPng(png);
  return {iconString(scaled(picture, 32)), iconString(scaled(picture, 16))};
}

}  // namespace orvane::demo

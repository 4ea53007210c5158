#include "Support/IconPixels.h"

#include <algorithm>

namespace orvane {

namespace {

constexpr uint8_t kTransparent = 0;
constexpr uint8_t kOpaque = 255;

// Sets R, G and B of a row of pixels, which are stored as B, G, R and, at four bytes, one that means nothing.
template <size_t kBytesPerPixel>
void convertTrueColorRow(const uint8_t* source, uint8_t* rgba, size_t width) {
  for (size_t x = 0; x < width; ++x, source += kBytesPerPixel, rgba += 4) {
    rgba[0] = source[2];
    rgba[1] = source[1];
    rgba[2] = source[0];
  }
}

// The same for pixels of 16 bits, little-endian: 5 bits of red, 6 of green, 5 of blue.
void convertHighColorRow(const uint8_t* source, uint8_t* rgba, size_t width) {
  for (size_t x = 0; x < width; ++x, source += 2, rgba += 4) {
    const unsigned value = source[0] | static_cast<unsigned>(source[1]) << 8;
    rgba[0] = static_cast<uint8_t>(value >> 8 & 0xF8);
    rgba[1] = static_cast<uint8_t>(value >> 3 & 0xFC);
    rgba[2] = static_cast<uint8_t>(value << 3 & 0xFF);
  }
}

using RowConverter = void (*)(const uint8_t* source, uint8_t* rgba, size_t width);

RowConverter rowConverterFor(uint64_t bytesPerPixel) {
  switch (bytesPerPixel) {
    case 2:
      return convertHighColorRow;
    case 3:
      return convertTrueColorRow<3>;
    case 4:
      return convertTrueColorRow<4>;
    default:
      return nullptr;
  }
}

// `mask` begins at the row's first byte. It may end within the row's last pixels: see ico2png.h.
void setAlpha(std::span<const uint8_t> mask, uint8_t* rgba, size_t width) {
  constexpr size_t kPixelsPerByte = 8;
  for (size_t x = 0; x < width; x += kPixelsPerByte) {
    const unsigned bits = x / kPixelsPerByte < mask.size() ? mask[x / kPixelsPerByte] : 0;
    uint8_t* const alpha = rgba + x * 4 + 3;
    const size_t count = std::min(width - x, kPixelsPerByte);
    for (size_t i = 0; i < count; ++i) alpha[i * 4] = (bits << i & 0x80) != 0 ? kTransparent : kOpaque;
  }
}

}  // namespace

std::optional<IconImage> iconImageOf(const IconRecord& record) {
  const auto width = static_cast<uint64_t>(record.bmiColor.biWidth);
  const auto height = static_cast<uint64_t>(record.bmiColor.biHeight);
  const uint64_t bytesPerPixel = record.colorBits.size() / (width * height);
  const RowConverter convertRow = rowConverterFor(bytesPerPixel);
  const uint64_t maskRowSize = width / 8;
  // Both factors are below 2^31, so no product wraps around.
  if (!convertRow || maskRowSize * height > record.maskBits.size()) return std::nullopt;

  IconImage image;
  image.width = static_cast<uint32_t>(width);
  image.height = static_cast<uint32_t>(height);
  image.rgba.resize(width * height * 4);
  uint8_t* rgba = image.rgba.data();
  for (uint64_t row = height; row-- > 0; rgba += width * 4) {  // stored from the bottom up
    convertRow(record.colorBits.data() + row * width * bytesPerPixel, rgba, width);
    setAlpha(record.maskBits.subspan(row * maskRowSize), rgba, width);
  }
  return image;
}

}  // namespace orvane

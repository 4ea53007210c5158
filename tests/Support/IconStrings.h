#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// A picture to make an icon string of: rows from the top, 4 bytes R, G, B, A each pixel. Of alpha only 0 counts.
struct IconPicture {
  uint32_t width = 0;
  uint32_t height = 0;
  std::vector<uint8_t> rgba;
};

namespace icon_strings {

inline constexpr size_t kMaskHeader = 20;
/// Where fields lie in a BITMAPINFOHEADER.
enum HeaderField : size_t {
  kSize,
  kWidth = 4,
  kHeight = 8,
  kBitCount = 14,
  kCompression = 16,
  kSizeImage = 20,
  kClrUsed = 32
};

inline size_t maskSize(const IconPicture& picture) { return picture.width / 8 * picture.height; }
inline size_t colorHeader(const IconPicture& picture) { return 68 + maskSize(picture); }

inline void append(std::string& digits, uint64_t number, size_t bytes) {
  for (size_t shift = bytes * 8; shift > 0; shift -= 4) digits += "0123456789abcdef"[number >> (shift - 4) & 15];
}

inline void appendHeader(std::string& digits, const IconPicture& picture, unsigned bitCount, size_t sizeImage) {
  for (const uint64_t field : {uint64_t{40}, uint64_t{picture.width}, uint64_t{picture.height}})
    append(digits, field, 4);
  append(digits, 1, 2);
  append(digits, bitCount, 2);
  for (const uint64_t field : {uint64_t{0}, uint64_t{sizeImage}, uint64_t{0}, uint64_t{0}, uint64_t{0}, uint64_t{0}}) {
    append(digits, field, 4);
  }
  append(digits, 0xEEEEEEEEEEEEEEEE, 8);
}

inline void appendPixel(std::string& digits, const uint8_t* rgba, unsigned bitCount) {
  if (bitCount == 16) {
    const unsigned value = (rgba[0] & 0xF8u) << 8 | (rgba[1] & 0xFCu) << 3 | rgba[2] >> 3;
    append(digits, (value & 0xFF) << 8 | value >> 8, 2);
  } else {
    append(digits, uint64_t{rgba[2]} << 16 | uint64_t{rgba[1]} << 8 | rgba[0], 3);
    if (bitCount == 32) append(digits, 0x5A, 1);
  }
}

/// The icon string of a picture with 16, 24 or 32 bits a pixel. Its width must be divisible by 8.
inline std::string make(const IconPicture& picture, unsigned bitCount) {
  std::string digits;
  for (const uint64_t field : {1, 7, 8, 9, 10}) append(digits, field, 4);
  appendHeader(digits, picture, 1, maskSize(picture));
  for (size_t y = picture.height; y-- > 0;) {
    for (size_t x = 0; x < picture.width; x += 8) {
      unsigned bits = 0;
      for (size_t bit = 0; bit < 8; ++bit) {
        bits = bits << 1 | (picture.rgba[(y * picture.width + x + bit) * 4 + 3] == 0 ? 1 : 0);
      }
      append(digits, bits, 1);
    }
  }
  appendHeader(digits, picture, bitCount, size_t{picture.width} * picture.height * bitCount / 8);
  for (size_t y = picture.height; y-- > 0;) {
    for (size_t x = 0; x < picture.width; ++x) {
      appendPixel(digits, &picture.rgba[(y * picture.width + x) * 4], bitCount);
    }
  }
  return digits;
}

/// The string with another number in the `bytes` bytes at `offset` of its record.
inline std::string with(std::string digits, size_t offset, uint64_t number, size_t bytes = 4) {
  std::string field;
  append(field, number, bytes);
  return digits.replace(offset * 2, field.size(), field);
}

}  // namespace icon_strings

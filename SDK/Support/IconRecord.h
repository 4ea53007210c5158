#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace orvane {

/// The BITMAPINFOHEADER of Windows, in the machine's byte order.
struct BitmapInfoHeader {
  /// The bytes it takes in an icon record and in an ICO file.
  static constexpr size_t kSize = 40;

  uint32_t biSize = 0;
  int32_t biWidth = 0;
  int32_t biHeight = 0;
  uint16_t biPlanes = 0;
  uint16_t biBitCount = 0;
  uint32_t biCompression = 0;
  uint32_t biSizeImage = 0;
  uint32_t biXPelsPerMeter = 0;
  uint32_t biYPelsPerMeter = 0;
  uint32_t biClrUsed = 0;
  uint32_t biClrImportant = 0;
};

/// What an icon string says. Not copied, as its views point into its own bytes; a move keeps them valid.
struct IconRecord {
  IconRecord() = default;
  IconRecord(IconRecord&&) = default;
  IconRecord& operator=(IconRecord&&) = default;

  BitmapInfoHeader bmiMask;
  /// Width and height are above 0, and `biBitCount` is 16, 24 or 32.
  BitmapInfoHeader bmiColor;
  /// `bmiMask.biSizeImage` bytes of `bytes`.
  std::span<const uint8_t> maskBits;
  /// `bmiColor.biSizeImage` bytes of `bytes`.
  std::span<const uint8_t> colorBits;
  /// The decoded string.
  std::vector<uint8_t> bytes;
};

/// Reads an icon string and logs its fields at level 5. Nothing if it is one that ico2png.h refuses in every form.
/// Any thread.
/// @throws std::bad_alloc
std::optional<IconRecord> readIconRecord(std::string_view iconString);

}  // namespace orvane

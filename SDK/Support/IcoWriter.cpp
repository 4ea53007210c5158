#include "Support/IcoWriter.h"

#include <concepts>
#include <utility>

namespace orvane {

namespace {

constexpr uint32_t kBitFields = 3;  // a value of biCompression
constexpr uint32_t kColorMasks[] = {0x00FF0000, 0x000000FF, 0x0000FF00};
constexpr uint32_t kImageOffset = 22;

class LittleEndianBytes {
 public:
  explicit LittleEndianBytes(size_t size) { bytes_.reserve(size); }

  template <std::unsigned_integral Number>
  void append(Number number) {
    for (size_t byte = 0; byte < sizeof number; ++byte) {
      bytes_.push_back(static_cast<uint8_t>(static_cast<uint64_t>(number) >> 8 * byte));
    }
  }
  void append(std::span<const uint8_t> bits) { bytes_.insert(bytes_.end(), bits.begin(), bits.end()); }
  std::vector<uint8_t> take() { return std::move(bytes_); }

 private:
  std::vector<uint8_t> bytes_;
};

void appendDirectory(LittleEndianBytes& file, const BitmapInfoHeader& color, uint32_t resourceSize) {
  constexpr uint16_t kReserved = 0;
  constexpr uint16_t kTypeIcon = 1;
  constexpr uint16_t kCount = 1;
  for (const uint16_t word : {kReserved, kTypeIcon, kCount}) file.append(word);

  file.append(static_cast<uint8_t>(color.biWidth));
  file.append(static_cast<uint8_t>(color.biHeight));
  file.append(static_cast<uint8_t>(color.biClrUsed));
  file.append(uint8_t{0});
  file.append(color.biPlanes);
  file.append(color.biBitCount);
  file.append(resourceSize);
  file.append(kImageOffset);
}

void appendHeader(LittleEndianBytes& file, const BitmapInfoHeader& color) {
  file.append(color.biSize);
  file.append(static_cast<uint32_t>(color.biWidth));
  file.append(static_cast<uint32_t>(color.biHeight) * 2);  // an ICO file counts the mask's rows too
  file.append(color.biPlanes);
  file.append(color.biBitCount);
  file.append(color.biCompression);
  file.append(color.biSizeImage);
  file.append(color.biXPelsPerMeter);
  file.append(color.biYPelsPerMeter);
  file.append(color.biClrUsed);
  file.append(color.biClrImportant);
}

}  // namespace

std::vector<uint8_t> icoFileOf(const IconRecord& record) {
  const BitmapInfoHeader& color = record.bmiColor;
  const bool hasColorMasks = color.biCompression == kBitFields;
  const size_t resourceSize = BitmapInfoHeader::kSize + (hasColorMasks ? sizeof kColorMasks : 0) +
                              record.colorBits.size() + record.maskBits.size();

  LittleEndianBytes file(kImageOffset + resourceSize);
  appendDirectory(file, color, static_cast<uint32_t>(resourceSize));
  appendHeader(file, color);
  if (hasColorMasks) {
    for (const uint32_t mask : kColorMasks) file.append(mask);
  }
  file.append(record.colorBits);
  file.append(record.maskBits);
  return file.take();
}

}  // namespace orvane

#include "Support/IconRecord.h"

#include <limits>

#include "Support/OvWriteLog.h"

namespace orvane {

namespace {

constexpr uint64_t kMaskHeaderOffset = 20;
constexpr uint64_t kSkippedBehindHeader = 8;
constexpr uint64_t kMaskBitsOffset = kMaskHeaderOffset + BitmapInfoHeader::kSize + kSkippedBehindHeader;

// Keeps every size that is made of the string's within the 32 bits of an ICO file's fields.
constexpr uint64_t kLargestString = std::numeric_limits<uint32_t>::max();

// Arithmetic and choices rather than a table: the compiler makes vector instructions of it, and nearly all of the time
// that an icon takes goes here.
constexpr unsigned valueOf(char digit) {
  const auto decimal = static_cast<uint8_t>(digit - '0');
  const auto letter = static_cast<uint8_t>((digit | 0x20) - 'a');
  const auto valueOfLetter = static_cast<uint8_t>(letter < 6 ? letter + 10 : 0);
  return decimal < 10 ? decimal : valueOfLetter;
}

std::vector<uint8_t> decodeHexadecimal(std::string_view digits) {
  std::vector<uint8_t> bytes(digits.size() / 2);
  const char* const text = digits.data();
  uint8_t* const values = bytes.data();
  const size_t size = bytes.size();
  for (size_t i = 0; i < size; ++i)
    values[i] = static_cast<uint8_t>(valueOf(text[2 * i]) << 4 | valueOf(text[2 * i + 1]));
  return bytes;
}

class BigEndianReader {
 public:
  explicit BigEndianReader(const uint8_t* bytes) : next_(bytes) {}

  uint16_t next16() {
    const auto value = static_cast<uint16_t>(next_[0] << 8 | next_[1]);
    next_ += 2;
    return value;
  }
  uint32_t next32() {
    const uint32_t high = next16();
    return high << 16 | next16();
  }
  int32_t nextSigned32() { return static_cast<int32_t>(next32()); }

 private:
  const uint8_t* next_;
};

// All offsets and sizes are sums of a few 32-bit values in 64 bits: none can wrap around.
std::optional<BitmapInfoHeader> readHeader(std::span<const uint8_t> bytes, uint64_t offset) {
  if (offset + BitmapInfoHeader::kSize > bytes.size()) return std::nullopt;
  BigEndianReader reader(bytes.data() + offset);
  BitmapInfoHeader header;
  header.biSize = reader.next32();
  header.biWidth = reader.nextSigned32();
  header.biHeight = reader.nextSigned32();
  header.biPlanes = reader.next16();
  header.biBitCount = reader.next16();
  header.biCompression = reader.next32();
  header.biSizeImage = reader.next32();
  header.biXPelsPerMeter = reader.next32();
  header.biYPelsPerMeter = reader.next32();
  header.biClrUsed = reader.next32();
  header.biClrImportant = reader.next32();
  // A smaller size would lay what follows over the header itself.
  if (header.biSize < BitmapInfoHeader::kSize) return std::nullopt;
  return header;
}

std::optional<std::span<const uint8_t>> viewOf(std::span<const uint8_t> bytes, uint64_t offset, uint32_t size) {
  if (offset + size > bytes.size()) return std::nullopt;
  return bytes.subspan(offset, size);
}

void logHeader(const char* name, const BitmapInfoHeader& header) {
  OvWriteLog(5, "%s.biWidth=%d", name, header.biWidth);
  OvWriteLog(5, "%s.biHeight=%d", name, header.biHeight);
  OvWriteLog(5, "%s.biBitCount=%d", name, header.biBitCount);
}

void logFields(const IconRecord& record) {
  BigEndianReader leading(record.bytes.data());
  OvWriteLog(5, "fIcon=%d", leading.nextSigned32());
  for (const char* name : {"xHotspot", "yHotspot", "cbMask", "cbColor"}) {
    OvWriteLog(5, "%s=%ld", name, static_cast<long>(leading.next32()));
  }
  logHeader("bmiMask", record.bmiMask);
  logHeader("bmiColor", record.bmiColor);
}

bool isConvertible(const BitmapInfoHeader& color) {
  const bool isTrueColor = color.biBitCount == 16 || color.biBitCount == 24 || color.biBitCount == 32;
  return isTrueColor && color.biWidth > 0 && color.biHeight > 0;
}

}  // namespace

std::optional<IconRecord> readIconRecord(std::string_view iconString) {
  if (iconString.empty() || iconString.size() % 2 != 0 || iconString.size() > kLargestString) return std::nullopt;
  IconRecord record;
  record.bytes = decodeHexadecimal(iconString);

  const auto maskHeader = readHeader(record.bytes, kMaskHeaderOffset);
  if (!maskHeader) return std::nullopt;
  const uint64_t colorHeaderOffset =
      kMaskHeaderOffset + maskHeader->biSize + kSkippedBehindHeader + maskHeader->biSizeImage;
  const auto colorHeader = readHeader(record.bytes, colorHeaderOffset);
  if (!colorHeader) return std::nullopt;
  record.bmiMask = *maskHeader;
  record.bmiColor = *colorHeader;
  logFields(record);

  const auto mask = viewOf(record.bytes, kMaskBitsOffset, maskHeader->biSizeImage);
  const auto color =
      viewOf(record.bytes, colorHeaderOffset + kSkippedBehindHeader + colorHeader->biSize, colorHeader->biSizeImage);
  if (!mask || !color || !isConvertible(*colorHeader)) return std::nullopt;
  record.maskBits = *mask;
  record.colorBits = *color;
  return record;
}

}  // namespace orvane

#include "Support/ico2png.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

#include "Support/FileReplacement.h"
#include "Support/IcoWriter.h"
#include "Support/IconPixels.h"
#include "Support/OvWriteLog.h"
#include "Support/PngWriter.h"

namespace {

using Bytes = std::vector<uint8_t>;

// Gives what `body` gives, or the result that stands for failure where memory runs out.
template <typename Body>
auto guarded(Body body) noexcept -> decltype(body()) {
  try {
    return body();
  } catch (const std::bad_alloc&) {
    OvWriteLog(5, "memory allocation error");
    return {};
  }
}

std::optional<Bytes> makeIco(const char* iconString) {
  const auto record = orvane::readIconRecord(iconString ? iconString : "");
  if (record) return orvane::icoFileOf(*record);
  OvWriteLog(5, "error converting icon");
  return std::nullopt;
}

std::optional<Bytes> makePng(const char* iconString) {
  const auto record = orvane::readIconRecord(iconString ? iconString : "");
  const auto image = record ? orvane::iconImageOf(*record) : std::nullopt;
  return image ? orvane::pngFileOf(*image) : std::nullopt;
}

int handOver(const std::optional<Bytes>& file, unsigned char** outBuffer, unsigned int* outSize) {
  if (!file || file->size() > std::numeric_limits<unsigned int>::max()) return 0;
  *outBuffer = static_cast<unsigned char*>(malloc(file->size()));
  if (!*outBuffer) throw std::bad_alloc();
  memcpy(*outBuffer, file->data(), file->size());
  *outSize = static_cast<unsigned int>(file->size());
  return 1;
}

using FileMaker = std::optional<Bytes> (*)(const char* iconString);

int convertToBuffer(FileMaker make, const char* iconString, unsigned char** outBuffer, unsigned int* outSize) {
  if (!outBuffer || !outSize) return 0;
  *outBuffer = nullptr;
  *outSize = 0;
  return guarded([&] { return handOver(make(iconString), outBuffer, outSize); });
}

// What fails once a file is open, rather than at opening it.
bool isWriteFault(int reason) { return reason == ENOSPC || reason == EDQUOT || reason == EFBIG || reason == EIO; }

int saveToFile(FileMaker make, const char* iconString, const char* path, const char* writeFaultText) {
  return guarded([&] {
    const auto file = make(iconString);
    if (!file || !path) return 0;
    if (orvane::replaceFile(path, file->data(), file->size())) return 1;
    if (isWriteFault(errno)) {
      OvWriteLog(5, "%s", writeFaultText);
    } else {
      OvWriteLog(5, "error opening file %s for write access", path);
    }
    return 0;
  });
}

}  // namespace

std::optional<IconImage> ico2png_decode_icon_string(std::string_view iconString) {
  return guarded([iconString] {
    const auto record = orvane::readIconRecord(iconString);
    return record ? orvane::iconImageOf(*record) : std::nullopt;
  });
}

int ico2png_convert_icon_string_to_ico_buffer(const char* iconString, unsigned char** outBuffer,
                                              unsigned int* outSize) {
  return convertToBuffer(makeIco, iconString, outBuffer, outSize);
}

int ico2png_convert_icon_string_to_png_buffer(const char* iconString, unsigned char** outBuffer,
                                              unsigned int* outSize) {
  return convertToBuffer(makePng, iconString, outBuffer, outSize);
}

int ico2png_save_icon_string_to_ico_file(const char* iconString, const char* path) {
  return saveToFile(makeIco, iconString, path, "error writing icon file");
}

int ico2png_save_icon_string_to_png_file(const char* iconString, const char* path) {
  return saveToFile(makePng, iconString, path, "Exception occurred!");
}

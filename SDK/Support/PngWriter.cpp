#include "Support/PngWriter.h"

#include <new>

#include <png.h>

#include "Support/OvWriteLog.h"

namespace orvane {

namespace {

[[noreturn]] void logErrorAndJump(png_structp png, png_const_charp message) {
  OvWriteLog(5, "libpng error: %s", message);
  png_longjmp(png, 1);
}

void logWarning(png_structp, png_const_charp message) { OvWriteLog(5, "libpng warning: %s", message); }

void logRow(png_structp, png_uint_32 row, int) { OvWriteLog(5, "libpng row %d written", static_cast<int>(row)); }

bool appendBytes(std::vector<uint8_t>& file, const uint8_t* bytes, size_t size) noexcept {
  try {
    file.insert(file.end(), bytes, bytes + size);
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

// No exception may cross libpng's frames, and png_error jumps: so it is called where no handler is open.
void writeBytes(png_structp png, png_bytep bytes, size_t size) {
  auto* const file = static_cast<std::vector<uint8_t>*>(png_get_io_ptr(png));
  if (!appendBytes(*file, bytes, size)) png_error(png, "memory allocation error");
}

void flushNothing(png_structp) {}

// libpng's two structures.
class PngWriteState {
 public:
  PngWriteState() : png_(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, logErrorAndJump, logWarning)) {
    if (!png_) {
      OvWriteLog(5, "error calling png_create_write_struct");
      return;
    }
    info_ = png_create_info_struct(png_);
    if (!info_) OvWriteLog(5, "error calling png_create_info_struct");
  }
  ~PngWriteState() { png_destroy_write_struct(&png_, &info_); }
  PngWriteState(const PngWriteState&) = delete;
  PngWriteState& operator=(const PngWriteState&) = delete;

  bool isComplete() const { return png_ && info_; }
  png_structp png() const { return png_; }
  png_infop info() const { return info_; }

 private:
  png_structp png_;
  png_infop info_ = nullptr;
};

// libpng comes back here from its errors by longjmp, over frames of its own and of the callbacks above. Neither they
// nor this function hold an object with a destructor, which the jump would skip: those belong to the caller.
bool writeWithLibpng(png_structp png, png_infop info, const IconImage& image, std::vector<uint8_t>& file) {
  if (setjmp(png_jmpbuf(png)) != 0) {
    OvWriteLog(5, "libpng encountered a fatal error");
    return false;
  }
  png_set_write_fn(png, &file, writeBytes, flushNothing);
  png_set_write_status_fn(png, logRow);
  png_set_IHDR(png, info, image.width, image.height, 8, PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_write_info(png, info);
  const size_t rowSize = size_t{image.width} * 4;
  for (size_t row = 0; row < image.height; ++row) png_write_row(png, image.rgba.data() + row * rowSize);
  png_write_end(png, info);
  return true;
}

}  // namespace

std::optional<std::vector<uint8_t>> pngFileOf(const IconImage& image) {
  std::vector<uint8_t> file;
  const PngWriteState state;
  if (state.isComplete() && writeWithLibpng(state.png(), state.info(), image, file)) return file;
  OvWriteLog(5, "Exception occurred!");
  return std::nullopt;
}

}  // namespace orvane

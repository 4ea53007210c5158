// Any text as an icon string: what is refused and what is made must agree between the forms.
#include <cstdlib>
#include <string>

#include "Support/ico2png.h"

namespace {

void require(bool holds) {
  if (!holds) abort();
}

using Converter = int (*)(const char*, unsigned char**, unsigned int*);

unsigned int sizeOfFile(Converter convert, const std::string& iconString) {
  unsigned char* buffer = nullptr;
  unsigned int size = 0;
  const int result = convert(iconString.c_str(), &buffer, &size);
  require(result == (buffer ? 1 : 0) && result == (size > 0 ? 1 : 0));
  free(buffer);
  return size;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // A terminating zero ends the string for the one form and counts as a digit for the other.
  std::string iconString(reinterpret_cast<const char*>(data), size);
  iconString.resize(iconString.find_last_not_of('\0') + 1);
  for (char& digit : iconString) digit = digit == '\0' ? '0' : digit;

  const auto image = ico2png_decode_icon_string(iconString);
  const unsigned int icoSize = sizeOfFile(ico2png_convert_icon_string_to_ico_buffer, iconString);
  const unsigned int pngSize = sizeOfFile(ico2png_convert_icon_string_to_png_buffer, iconString);
  require(icoSize <= 74 + iconString.size() / 2);
  require((pngSize > 0) == (image && image->width <= 1000000 && image->height <= 1000000));
  if (!image) return 0;
  require(icoSize > 0 && image->width > 0 && image->height > 0);
  require(image->rgba.size() == size_t{image->width} * image->height * 4 && image->rgba.size() <= iconString.size());
  for (size_t alpha = 3; alpha < image->rgba.size(); alpha += 4) {
    require(image->rgba[alpha] == 0 || image->rgba[alpha] == 255);
  }
  return 0;
}

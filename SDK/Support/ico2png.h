#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// @file
/// Turns the icon strings of a broker (a Windows icon description as hexadecimal digits) into ICO and PNG.
///
/// The string comes from outside: every size and offset in it is checked before use. Refused are null, empty and
/// odd-length strings, fields that point behind the bytes, a width or height of 0 or above 1,024, and icons of other
/// than 16, 24 or 32 bits per pixel: those of 8 bits or less come without their colour table, so nothing could show
/// them. All functions may be called on any thread and several at a time.

/// An icon's picture: `width` * `height` * 4 bytes R, G, B, A, row by row from the top; alpha is 0 or 255.
struct IconImage {
  uint32_t width = 0;
  uint32_t height = 0;
  std::vector<uint8_t> rgba;
};

/// The picture in an icon string, or nothing if it is refused.
std::optional<IconImage> ico2png_decode_icon_string(std::string_view iconString);

/// All four return 1, or 0 on failure, with nothing left behind. A buffer is freed by the caller with free(); on
/// failure it is null and its size 0. A file is created 0600 and replaced as a whole.
int ico2png_convert_icon_string_to_ico_buffer(const char* iconString, unsigned char** outBuffer, unsigned int* outSize);
int ico2png_convert_icon_string_to_png_buffer(const char* iconString, unsigned char** outBuffer, unsigned int* outSize);
int ico2png_save_icon_string_to_ico_file(const char* iconString, const char* path);
int ico2png_save_icon_string_to_png_file(const char* iconString, const char* path);

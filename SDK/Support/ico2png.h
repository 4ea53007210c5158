#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

/// @file
/// Turns the icon strings of a broker into ICO and PNG.
///
/// An icon string is a Windows icon description, big-endian, as hexadecimal digits: small or capital, any other
/// character counting as the digit 0. It comes from outside, so every size and offset in it is checked before use.
///
/// Refused by every function here:
/// - a null or empty string, one of odd length and one of 4 GiB or more;
/// - a `biSize` below the 40 bytes of a header, and any size that points behind the bytes that came;
/// - a `biWidth` or `biHeight` of the colours that is 0 or negative;
/// - a `biBitCount` of the colours other than 16, 24 or 32: icons of 8 bits or less come without their colour table, so
///   neither a PNG nor an ICO file could show them.
///
/// Refused as a picture (PNG and ico2png_decode_icon_string), as the ICO form copies the bits without reading them:
/// - `biSizeImage` / (`biWidth` * `biHeight`), cut to a whole number, other than 2, 3 or 4. This quotient alone tells
///   how a pixel is stored, whichever of its three values `biBitCount` has;
/// - a mask of less than `biHeight` rows of `biWidth` / 8 bytes.
///
/// Mask rows have no padding, so at a width that isn't divisible by 8 the bits of a row's last pixels lie in the byte
/// where the next row begins; a pixel whose bit would lie behind the mask counts as clear, hence opaque.
///
/// Width and height have no limit: a pixel takes at least two bytes of the string, so what came bounds the memory
/// needed. A PNG, though, has at most 1,000,000 pixels on a side.
///
/// All functions may be called on any thread and several at a time; none throws. Level 5 of the log has the fields of
/// each icon that could be read, and why memory, libpng or a file failed; that an icon was refused, only the ICO form.

/// An icon's picture: `width` * `height` * 4 bytes R, G, B, A, row by row from the top; alpha is 0 or 255.
struct IconImage {
  uint32_t width = 0;
  uint32_t height = 0;
  std::vector<uint8_t> rgba;
};

/// The picture in an icon string, or nothing if it is refused or memory runs out.
std::optional<IconImage> ico2png_decode_icon_string(std::string_view iconString);

/// Makes an ICO or PNG file's bytes in memory. Returns 1 and a buffer that the caller frees with free(), or 0 with the
/// buffer null and its size 0.
int ico2png_convert_icon_string_to_ico_buffer(const char* iconString, unsigned char** outBuffer, unsigned int* outSize);
int ico2png_convert_icon_string_to_png_buffer(const char* iconString, unsigned char** outBuffer, unsigned int* outSize);

/// Writes an ICO or PNG file. Returns 1, or 0 on failure. The file is made 0600 and replaced as a whole: on failure
/// `path` is as it was and nothing is left beside it.
int ico2png_save_icon_string_to_ico_file(const char* iconString, const char* path);
int ico2png_save_icon_string_to_png_file(const char* iconString, const char* path);

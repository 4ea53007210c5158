#pragma once

#include <string>
#include <string_view>

/// @file
/// Conversions between the single-byte text of the wire and of launch files and the UTF-8 inside the program.
///
/// The single-byte form is named after code page 1252 and is in fact Latin-1: each byte is the code point of its value,
/// so 0x80 is U+0080 and not the euro sign. Back from UTF-8, a byte 0xC2 or 0xC3 makes one byte with whatever byte
/// follows; every other byte, and one of these two at the end of the text, is kept as it is.
/// All functions may be called on any thread.

/// `text` as UTF-8: a new zero-terminated buffer that the caller frees with free(), or null if `text` is null or memory
/// is short.
char* ovutils_cp1252_to_utf8(const char* text);

/// The reverse, with the same ownership. The bytes of a UTF-8 sequence for a character above U+00FF stay as they are.
/// The buffer may be larger than its text.
char* ovutils_utf8_to_cp1252(const char* text);

/// Multibyte text of the current locale as wide characters, and back, up to the first zero. Empty if any of it can't be
/// converted: half a text is never returned.
std::wstring ovutils_string_to_wstring(const std::string& text);
std::string ovutils_wstring_to_string(const std::wstring& text);

/// The Windows form of a POSIX locale name, `de-de` for `de_DE.UTF-8`. Empty for null, a name without "_", and a
/// name that doesn't end in ".UTF-8" (in any letter case) at its first ".". Only the first 128 bytes count.
std::string ovutils_get_windows_locale(const char* posixLocale);

namespace orvane {

/// What ovutils_cp1252_to_utf8 and ovutils_utf8_to_cp1252 do, for text held in strings; a zero byte is a byte like any
/// other.
std::string cp1252ToUtf8(std::string_view text);
std::string utf8ToCp1252(std::string_view text);

}  // namespace orvane

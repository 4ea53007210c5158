#pragma once

#include <string>
#include <string_view>

/// @file
/// The strings of a launch file: escapes and tags.

namespace orvane {

/// `text` with `%`, LF and CR as `%%`, `%0a` and `%0d`, added to `out`.
void appendEscaped(std::string& out, const char* text);

/// Undoes the escapes of `text` where it stands. `%%` is one `%`; any other `%` and the two bytes behind it are one
/// byte of the value that strtoul reads there as hexadecimal: 0 if that is no number, and then the string ends. An
/// escape that the string's end cuts off has only the digits that are there.
void undoEscapes(char* text);

/// Sets `field`, if it is still unset, to the text of an escaped string of this tag: `u` for UTF-8, `s` for a
/// single-byte text. Any other tag sets nothing. `text` holds the result of undoing its escapes afterwards, or is as it
/// was.
void read_ovl_string(std::string_view tag, char* text, char*& field);

/// Adds the line of an escaped UTF-8 string to `stream`; nothing if `value` is null.
void write_ovl_string(std::string& stream, std::string_view key, const char* value);

}  // namespace orvane

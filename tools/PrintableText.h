#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// Text from outside (a broker's, a launch file's; UTF-8) with each control character as "?": nothing of it can act on
/// the terminal that shows it. Any thread.
inline std::string printable(std::string_view text) {
  std::string result;
  for (size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    // U+0080 to U+009F: one of them begins escape sequences, too.
    const bool isWide = byte == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) - 0x80u < 0x20u;
    if (isWide) ++i;
    result += isWide || byte < 0x20 || byte == 0x7F ? '?' : text[i];
  }
  return result;
}

}  // namespace orvane

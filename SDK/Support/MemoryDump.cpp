#include "Support/MemoryDump.h"

#include <cstdio>
#include <string>
#include <string_view>

void ovutils_dump_memory(const char* title, const void* bytes, size_t size) {
  constexpr size_t kBytesPerLine = 16;
  constexpr std::string_view kDigits = "0123456789abcdef";
  const std::string_view all = bytes ? std::string_view(static_cast<const char*>(bytes), size) : std::string_view();

  // Written by a single call, so that the lines of two threads stay apart.
  std::string text;
  if (title && *title) text.append(title).append("\n");
  text.append("{\n");
  for (size_t offset = 0; offset < all.size(); offset += kBytesPerLine) {
    const std::string_view line = all.substr(offset, kBytesPerLine);
    for (const char c : line) {
      const auto byte = static_cast<unsigned char>(c);
      text.append({kDigits[byte >> 4], kDigits[byte & 15], ' '});
    }
    text.append(3 * (kBytesPerLine - line.size()) + 2, ' ').append(line).append("\n");
  }
  text.append("}\n");
  fwrite(text.data(), 1, text.size(), stdout);
}

#include "Links/DecodeBase64.h"

#include <algorithm>
#include <string_view>

extern "C" {
#include <b64/cdecode.h>
}

namespace {

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// In pieces, as the decoder takes its sizes as int. What a piece leaves over of a byte, the next one completes.
constexpr size_t kBlockSize = 4096;

// The library's decoder passes over foreign bytes too, but not everywhere: where char is unsigned it takes them for
// digits, and a version without Debian's fix looks up "{" behind the end of its table.
std::string digitsOf(const std::string& text) {
  std::string digits;
  digits.reserve(text.size());
  for (char byte : text) {
    if (byte == '-') byte = '+';
    if (byte == '_') byte = '/';
    if (kAlphabet.find(byte) != std::string_view::npos) digits += byte;
  }
  return digits;
}

}  // namespace

std::string DecodeBase64(const std::string& text) {
  const std::string digits = digitsOf(text);
  std::string decoded;
  base64_decodestate state;
  base64_init_decodestate(&state);
  for (size_t start = 0; start < digits.size(); start += kBlockSize) {
    const size_t size = std::min(kBlockSize, digits.size() - start);
    // Larger than what is decoded, as the decoder reads and writes the byte behind it as well.
    char bytes[kBlockSize] = {};
    const int count = base64_decode_block(digits.data() + start, static_cast<int>(size), bytes, &state);
    decoded.append(bytes, static_cast<size_t>(count));
  }
  return decoded;
}

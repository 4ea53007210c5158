#include <array>
#include <cstring>

#include "Crypto/crypto.h"

namespace {

constexpr char kDigits[] = "0123456789ABCDEF";

constexpr std::array<uint8_t, 256> kNibbles = [] {
  std::array<uint8_t, 256> nibbles{};
  for (uint8_t value = 0; value < 16; ++value) {
    const auto digit = static_cast<unsigned char>(kDigits[value]);
    nibbles[digit] = value;
    if (value >= 10) nibbles[digit + 'a' - 'A'] = value;
  }
  return nibbles;
}();

unsigned nibbleOf(char character) { return kNibbles[static_cast<unsigned char>(character)]; }

}  // namespace

size_t crypto_bintohex(const unsigned char* bytes, size_t count, char* out, size_t outSize) {
  if (outSize == 0) return 0;
  memset(out, 0, outSize);
  if (count > (outSize - 1) / 2) return 0;
  for (size_t i = 0; i < count; ++i) {
    out[2 * i] = kDigits[bytes[i] >> 4];
    out[2 * i + 1] = kDigits[bytes[i] & 15];
  }
  return count;
}

size_t crypto_hextobin(const char* text, unsigned char* out, size_t size) {
  const size_t count = text ? strlen(text) / 2 : 0;
  if (count > size) return 0;
  for (size_t i = 0; i < count; ++i) {
    out[i] = static_cast<unsigned char>(nibbleOf(text[2 * i]) << 4 | nibbleOf(text[2 * i + 1]));
  }
  return count;
}

int crypto_hexdigit_to_nibble(char character) { return static_cast<int>(nibbleOf(character)); }

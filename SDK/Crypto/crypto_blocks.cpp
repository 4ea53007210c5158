#include <algorithm>
#include <array>
#include <cstring>
#include <numeric>

#include "Crypto/KeyMaterial.h"
#include "Crypto/RC4StreamCipher.h"
#include "Crypto/crypto.h"
#include "Support/RandomBytes.h"
#include "Support/SecureMemory.h"

using orvane::wipe;
using orvane::keymaterial::kFixedKeyWords;
using orvane::keymaterial::kScatter1024;
using orvane::keymaterial::kScatter256;

namespace {

template <typename Position, size_t size>
using ScatterTable = std::array<Position, size>;

void zero(char* out, size_t outSize) {
  if (outSize > 0) memset(out, 0, outSize);
}

// The filling comes from the system's generator: there is no seed to keep between calls, and nothing that threads
// share.
template <typename Position, size_t size>
void encodeBlock(const ScatterTable<Position, size>& scatter, unsigned char* block, const char* text) {
  if (!text) text = "";
  orvane::fillWithRandomBytes(block, size);
  for (size_t i = 0; i < size; ++i) {
    block[scatter[i]] = static_cast<unsigned char>(text[i]);
    if (text[i] == '\0') break;
  }
  block[size - 1] = static_cast<unsigned char>(-crypto_checksum(block, size - 1));
}

template <typename Position, size_t size>
void decodeBlock(const ScatterTable<Position, size>& scatter, const unsigned char* block, char* out, size_t outSize) {
  zero(out, outSize);
  if (crypto_checksum(block, size) != 0) return;
  const size_t count = std::min(size, outSize);
  for (size_t i = 0; i < count; ++i) {
    // The last position holds the check sum. A text that reaches up to it has lost its terminating zero there.
    if (scatter[i] == size - 1) break;
    out[i] = static_cast<char>(block[scatter[i]]);
    if (out[i] == '\0') break;
  }
}

template <typename Position, size_t size>
int encryptText(const ScatterTable<Position, size>& scatter, const char* text, char* out, size_t outSize) {
  std::array<unsigned char, size> block;
  encodeBlock(scatter, block.data(), text);
  crypto_encrypt(block.data(), size);
  crypto_bintohex(block.data(), size, out, outSize);
  return 1;
}

template <typename Position, size_t size>
int decryptText(const ScatterTable<Position, size>& scatter, const char* hex, char* out, size_t outSize) {
  zero(out, outSize);
  std::array<unsigned char, size> block;
  if (crypto_hextobin(hex, block.data(), size) != size) return 0;
  crypto_decrypt(block.data(), size);
  decodeBlock(scatter, block.data(), out, outSize);
  wipe(block.data(), size);
  return 1;
}

}  // namespace

void crypto_encode256(unsigned char* block, const char* text) { encodeBlock(kScatter256, block, text); }
void crypto_encode1024(unsigned char* block, const char* text) { encodeBlock(kScatter1024, block, text); }

void crypto_decode256(const unsigned char* block, char* out, size_t outSize) {
  decodeBlock(kScatter256, block, out, outSize);
}
void crypto_decode1024(const unsigned char* block, char* out, size_t outSize) {
  decodeBlock(kScatter1024, block, out, outSize);
}

int crypto_encrypt256(const char* text, char* out, size_t outSize) {
  return encryptText(kScatter256, text, out, outSize);
}
int crypto_encrypt1024(const char* text, char* out, size_t outSize) {
  return encryptText(kScatter1024, text, out, outSize);
}

int crypto_decrypt256(const char* hex, char* out, size_t outSize) {
  return decryptText(kScatter256, hex, out, outSize);
}
int crypto_decrypt1024(const char* hex, char* out, size_t outSize) {
  return decryptText(kScatter1024, hex, out, outSize);
}

int crypto_encrypt_password(const char* text, char* out, size_t outSize) {
  return crypto_encrypt256(text, out, outSize);
}

int crypto_decrypt_password(const char* hex, char* out, size_t outSize) {
  zero(out, outSize);
  const size_t count = hex ? strlen(hex) / 2 : 0;
  std::array<unsigned char, kScatter256.size()> bytes;
  if (count > bytes.size()) return 0;
  if (count == bytes.size()) return crypto_decrypt256(hex, out, outSize);

  crypto_hextobin(hex, bytes.data(), count);
  crypto_decrypt(bytes.data(), count);
  if (outSize > 0) {
    const auto end = std::find(bytes.begin(), bytes.begin() + std::min(count, outSize - 1), 0);
    std::copy(bytes.begin(), end, out);
  }
  wipe(bytes.data(), count);
  return 1;
}

void crypto_encrypt(unsigned char* buffer, size_t length) {
  std::array<unsigned char, 4 * kFixedKeyWords.size()> key;
  for (size_t i = 0; i < key.size(); ++i) key[i] = static_cast<unsigned char>(kFixedKeyWords[i / 4] >> 8 * (i % 4));
  RC4StreamCipher cipher(key.data(), static_cast<long>(key.size()));
  wipe(key.data(), key.size());
  cipher.Encrypt(buffer, buffer, static_cast<long>(length));
}

void crypto_decrypt(unsigned char* buffer, size_t length) { crypto_encrypt(buffer, length); }

unsigned char crypto_checksum(const unsigned char* buffer, size_t length) {
  return static_cast<unsigned char>(std::accumulate(buffer, buffer + length, 0u));
}

const unsigned char* crypto_get_scatter_table256() { return kScatter256.data(); }
const uint16_t* crypto_get_scatter_table1024() { return kScatter1024.data(); }

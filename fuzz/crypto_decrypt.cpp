#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "Crypto/crypto.h"

namespace {

void require(bool holds) {
  if (!holds) abort();
}

using Decipher = int (*)(const char*, char*, size_t);

// Exactly `outSize` bytes, so that a write beyond is seen.
std::string deciphered(Decipher decipher, const std::string& hex, size_t outSize) {
  std::vector<char> out(outSize, 'x');
  const int result = decipher(hex.c_str(), out.data(), out.size());
  const auto end = std::find(out.begin(), out.end(), '\0');
  require(result == 1 || end == out.begin());
  return {out.begin(), end};
}

void hostileText(const std::string& hex, size_t outSize) {
  for (const Decipher decipher : {crypto_decrypt256, crypto_decrypt1024, crypto_decrypt_password}) {
    const std::string all = deciphered(decipher, hex, 1025);
    const std::string some = deciphered(decipher, hex, outSize);
    require(all.starts_with(some) && (some.size() == all.size() || some.size() + 1 >= outSize));
  }
  std::vector<unsigned char> bytes(outSize);
  require(crypto_hextobin(hex.c_str(), bytes.data(), bytes.size()) <= bytes.size());
}

void hostileContainer(const std::string& bytes) {
  const std::vector<unsigned char> before(bytes.begin(), bytes.end());
  std::vector<unsigned char> buffer = before;
  const size_t length = crypto_decrypt_buffer(buffer.data(), buffer.size());
  require(length == 0 || length + 19 == before.size());
  require(before.size() >= 19 || buffer == before);
}

// What was made under another key comes up as a block with any content and a right sum.
void hostileBlock(const std::string& bytes, size_t outSize) {
  std::vector<unsigned char> block(1024);
  std::copy_n(bytes.begin(), std::min(bytes.size(), block.size() - 1), block.begin());
  block.back() = static_cast<unsigned char>(-crypto_checksum(block.data(), block.size()));
  std::vector<char> out(outSize);
  crypto_decode1024(block.data(), out.data(), out.size());
  block[255] = static_cast<unsigned char>(block[255] - crypto_checksum(block.data(), 256));
  block.resize(256);
  block.shrink_to_fit();
  crypto_decode256(block.data(), out.data(), out.size());
}

void roundTrips(const std::string& bytes) {
  const std::string text = bytes.c_str();
  char hex[2049];
  crypto_encrypt_password(text.c_str(), hex, sizeof hex);
  require(deciphered(crypto_decrypt_password, hex, 257) == text.substr(0, 255));
  require(deciphered(crypto_decrypt256, hex, 257) == text.substr(0, 255));
  crypto_encrypt1024(text.c_str(), hex, sizeof hex);
  require(deciphered(crypto_decrypt1024, hex, 1025) == text.substr(0, 1023));

  std::vector<unsigned char> buffer(bytes.begin(), bytes.end());
  crypto_encrypt(buffer.data(), buffer.size());
  std::string shortForm(2 * buffer.size() + 1, 'x');
  require(crypto_bintohex(buffer.data(), buffer.size(), shortForm.data(), shortForm.size()) == buffer.size());
  shortForm.pop_back();
  if (bytes.size() < 256) require(deciphered(crypto_decrypt_password, shortForm, 257) == text);
  std::vector<unsigned char> back(buffer.size());
  require(crypto_hextobin(shortForm.c_str(), back.data(), back.size()) == back.size() && back == buffer);

  std::string container = orvane::encipheredContainer(bytes);
  require(container.size() == bytes.size() + 19);
  container.resize(crypto_decrypt_buffer(reinterpret_cast<unsigned char*>(container.data()), container.size()));
  require(container == bytes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const size_t outSize = (data[0] + size_t{256} * data[1]) % 1200;
  const std::string bytes(data + 2, data + size);
  hostileText(bytes, outSize);
  hostileContainer(bytes);
  hostileBlock(bytes, outSize);
  roundTrips(bytes);
  return 0;
}

#include "Crypto/RC4StreamCipher.h"

namespace {

std::string applied(RC4StreamCipher cipher, std::string text) {
  auto* const bytes = reinterpret_cast<unsigned char*>(text.data());
  cipher.Encrypt(bytes, bytes, static_cast<long>(text.size()));
  return text;
}

RC4StreamCipher cipherFor(const std::string& key) {
  return {reinterpret_cast<const unsigned char*>(key.data()), static_cast<long>(key.size())};
}

std::string countingKey(int size) {
  std::string key;
  for (int i = 1; i <= size; ++i) key += static_cast<char>(i);
  return key;
}

// The customary short vectors, and from RFC 6229 the key stream at some offsets.
TEST(RC4StreamCipher, GivesThePublishedVectors) {
  struct Row {
    std::string key;
    int offset;
    std::string plain, cipher;
  };
  const std::string zeros(8, '\0');
  for (const Row& row : {Row{"Key", 0, "Plaintext", "\xBB\xF3\x16\xE8\xD9\x40\xAF\x0A\xD3"},
                         Row{"Wiki", 0, "pedia", "\x10\x21\xBF\x04\x20"},
                         Row{"Secret", 0, "Attack at dawn", "\x45\xA0\x1F\x64\x5F\xC3\x5B\x38\x35\x52\x54\x4B\x9B\xF5"},
                         Row{countingKey(5), 0, zeros, "\xB2\x39\x63\x05\xF0\x3D\xC0\x27"},
                         Row{countingKey(5), 4096, zeros, "\xFF\x25\xB5\x89\x95\x99\x67\x07"},
                         Row{countingKey(16), 0, zeros, "\x9A\xC7\xCC\x9A\x60\x9D\x1E\xF7"},
                         Row{countingKey(32), 0, zeros, "\xEA\xA6\xBD\x25\x88\x0B\xF9\x3D"}}) {
    RC4StreamCipher cipher = cipherFor(row.key);
    for (int i = 0; i < row.offset; ++i) cipher.Next();
    EXPECT_EQ(applied(cipher, row.plain), row.cipher) << row.key.size() << " bytes of key, at " << row.offset;
  }
}

TEST(RC4StreamCipher, KeepsItsPlaceAcrossCallsOfAnyKindAndLength) {
  const std::string plain(1000, 'p');
  RC4StreamCipher cipher = cipherFor("key");
  std::vector<unsigned char> pieces(plain.begin(), plain.end());
  for (size_t start = 0, length = 0; start < pieces.size(); start += length + 1, length = (length * 7 + 3) % 300) {
    length = std::min(length, pieces.size() - start - 1);
    cipher.Decrypt(&pieces[start], &pieces[start], static_cast<long>(length));
    pieces[start + length] ^= cipher.Next();
  }
  EXPECT_EQ(std::string(pieces.begin(), pieces.end()), applied(cipherFor("key"), plain));
}

TEST(RC4StreamCipher, TakesKeysOfAnyLength) {
  const std::string zeros(32, '\0');
  EXPECT_EQ(applied(cipherFor("ab"), zeros), applied(cipherFor("abab"), zeros));
  EXPECT_EQ(applied(cipherFor(countingKey(300)), zeros), applied(cipherFor(countingKey(256)), zeros));
  EXPECT_EQ(applied(cipherFor(""), zeros), applied(cipherFor(std::string(1, '\0')), zeros));
}

}  // namespace

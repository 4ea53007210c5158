#include <algorithm>
#include <array>
#include <cstring>
#include <new>

#include "Crypto/KeyMaterial.h"
#include "Crypto/RC4StreamCipher.h"
#include "Crypto/crypto.h"
#include "Support/FileReplacement.h"
#include "Support/RandomBytes.h"
#include "Support/SecureMemory.h"

using orvane::keymaterial::kScatter256;

namespace {

// marker, content, inner key
constexpr std::string_view kMarker = "OVL";
constexpr size_t kKeySize = 16;
constexpr size_t kOverhead = kMarker.size() + kKeySize;

void applyCipher(const unsigned char* key, size_t keySize, unsigned char* buffer, size_t length) {
  RC4StreamCipher cipher(key, static_cast<long>(keySize));
  cipher.Encrypt(buffer, buffer, static_cast<long>(length));
}

void applyOuterLayer(unsigned char* buffer, size_t length) {
  applyCipher(kScatter256.data(), kScatter256.size(), buffer, length);
}

void applyInnerLayer(unsigned char* buffer, size_t length) {
  const size_t enciphered = length - kKeySize;
  applyCipher(buffer + enciphered, kKeySize, buffer, enciphered);
}

// Strips both layers in place and moves the content to the front. Its length, which may be 0, or nothing.
std::optional<size_t> openContainer(unsigned char* buffer, size_t length) {
  if (length < kOverhead) return std::nullopt;
  applyOuterLayer(buffer, length);
  applyInnerLayer(buffer, length);
  if (!std::equal(kMarker.begin(), kMarker.end(), buffer)) return std::nullopt;
  const size_t contentLength = length - kOverhead;
  memmove(buffer, buffer + kMarker.size(), contentLength);
  return contentLength;
}

unsigned char* bytesOf(std::string& text) { return reinterpret_cast<unsigned char*>(text.data()); }

// A file too large for the memory counts as one that can't be read.
template <typename Work>
int resultOf(Work work) {
  try {
    return work() ? 1 : 0;
  } catch (const std::bad_alloc&) {
    return 0;
  }
}

}  // namespace

std::string orvane::encipheredContainer(std::string_view content) {
  std::string container(content.size() + kOverhead, '\0');
  const auto end = std::copy(kMarker.begin(), kMarker.end(), container.begin());
  std::copy(content.begin(), content.end(), end);
  fillWithRandomBytes(container.data() + container.size() - kKeySize, kKeySize);
  applyInnerLayer(bytesOf(container), container.size());
  applyOuterLayer(bytesOf(container), container.size());
  return container;
}

int crypto_encrypt_file(const char* path) {
  return resultOf([path] {
    std::optional<std::string> content = path ? orvane::readFile(path) : std::nullopt;
    if (!content) return false;
    const orvane::WipeAtEnd wipeContent(*content);
    const std::string container = orvane::encipheredContainer(*content);
    return orvane::replaceFile(path, container.data(), container.size());
  });
}

int crypto_decrypt_file(const char* path) {
  return resultOf([path] {
    std::optional<std::string> content = path ? orvane::readFile(path) : std::nullopt;
    if (!content) return false;
    const orvane::WipeAtEnd wipeContent(*content);
    const std::optional<size_t> length = openContainer(bytesOf(*content), content->size());
    return length && orvane::replaceFile(path, content->data(), *length);
  });
}

size_t crypto_decrypt_buffer(unsigned char* buffer, size_t length) { return openContainer(buffer, length).value_or(0); }

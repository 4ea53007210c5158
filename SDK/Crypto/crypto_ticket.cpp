#include <array>
#include <cstdlib>
#include <limits>

#include "Crypto/KeyMaterial.h"
#include "Crypto/crypto.h"
#include "Support/FileReplacement.h"
#include "Support/SecureMemory.h"

using orvane::keymaterial::kTicketGrantingBlock;

namespace {

std::array<unsigned char, 16> headOf(uint32_t fileSize) {
  const std::array<uint32_t, 4> words = {1, 0, static_cast<uint32_t>(kTicketGrantingBlock.size()), fileSize};
  std::array<unsigned char, 16> head;
  for (size_t i = 0; i < head.size(); ++i) head[i] = static_cast<unsigned char>(words[i / 4] >> 8 * (i % 4));
  return head;
}

// Writes at `position`, with a zero behind, and returns where that zero stands.
char* appendHexadecimal(char* position, const unsigned char* bytes, size_t count) {
  crypto_bintohex(bytes, count, position, 2 * count + 1);
  return position + 2 * count;
}

}  // namespace

char* crypto_create_tgt_response(const char* path) {
  std::optional<std::string> file = path ? orvane::readFile(path) : std::nullopt;
  if (!file) return nullptr;
  const orvane::WipeAtEnd wipeFile(*file);
  if (file->size() > std::numeric_limits<uint32_t>::max()) return nullptr;

  const auto head = headOf(static_cast<uint32_t>(file->size()));
  const size_t size = head.size() + kTicketGrantingBlock.size() + file->size();
  auto* const response = static_cast<char*>(malloc(2 * size + 1));
  if (!response) return nullptr;
  char* position = appendHexadecimal(response, head.data(), head.size());
  position = appendHexadecimal(position, kTicketGrantingBlock.data(), kTicketGrantingBlock.size());
  appendHexadecimal(position, reinterpret_cast<const unsigned char*>(file->data()), file->size());
  return response;
}

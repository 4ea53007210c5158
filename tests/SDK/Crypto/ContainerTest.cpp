#include "Crypto/KeyMaterial.h"
#include "Crypto/RC4StreamCipher.h"
#include "Crypto/crypto.h"
#include "Support/TemporaryFolder.h"

namespace {

std::string withCipher(const unsigned char* key, size_t keySize, std::string text) {
  auto* const bytes = reinterpret_cast<unsigned char*>(text.data());
  RC4StreamCipher(key, static_cast<long>(keySize)).Encrypt(bytes, bytes, static_cast<long>(text.size()));
  return text;
}

std::string withOuterKey(const std::string& text) {
  return withCipher(orvane::keymaterial::kScatter256.data(), 256, text);
}

std::string withInnerKey(const std::string& key, const std::string& text) {
  return withCipher(reinterpret_cast<const unsigned char*>(key.data()), key.size(), text);
}

// A second writing of the format.
std::string containerOf(const std::string& markerAndContent, const std::string& key = "0123456789abcdef") {
  return withOuterKey(withInnerKey(key, markerAndContent) + key);
}

const std::string kContents[] = {"", "x", "full address:s:host", std::string("\0\xFF\r\n", 4),
                                 std::string(100000, 'y')};

TEST(Container, AFileIsLaidOutAsPeersReadIt) {
  const TemporaryFolder folder;
  const std::string path = folder.file("launch");
  for (const std::string& content : kContents) {
    writeFile(path, content);
    ASSERT_EQ(crypto_encrypt_file(path.c_str()), 1);
    const std::string inner = withOuterKey(contentOf(path));
    ASSERT_EQ(inner.size(), content.size() + 19);
    const size_t end = inner.size() - 16;
    EXPECT_EQ(withInnerKey(inner.substr(end), inner.substr(0, end)), "OVL" + content);

    ASSERT_EQ(crypto_decrypt_file(path.c_str()), 1);
    EXPECT_EQ(contentOf(path), content);
  }
}

TEST(Container, WhatAPeerWroteIsReadFromAFileAndInMemory) {
  const TemporaryFolder folder;
  const std::string path = folder.file("launch");
  for (const std::string& content : kContents) {
    std::string buffer = containerOf("OVL" + content);
    writeFile(path, buffer);
    EXPECT_EQ(crypto_decrypt_file(path.c_str()), 1);
    EXPECT_EQ(contentOf(path), content);

    EXPECT_EQ(crypto_decrypt_buffer(reinterpret_cast<unsigned char*>(buffer.data()), buffer.size()), content.size());
    EXPECT_EQ(buffer.substr(0, content.size()), content);
  }
}

TEST(Container, TheSameContentTwiceGivesTwoContainers) {
  EXPECT_NE(orvane::encipheredContainer("content"), orvane::encipheredContainer("content"));
}

TEST(Container, WhatIsNotOneGivesZeroAndTheFileStays) {
  const TemporaryFolder folder;
  const std::string path = folder.file("launch");
  const std::string good = containerOf("OVLcontent");
  std::string wrongKey = good, wrongMarker = good;
  wrongKey.back() ^= 1;
  wrongMarker[2] ^= 1;
  for (const std::string& bytes : {std::string(), std::string("plain"), std::string("OVL plain, but longer than 19"),
                                   containerOf("OVM content"), containerOf("ovl content"), containerOf("OV"), wrongKey,
                                   wrongMarker, good.substr(1), good.substr(0, good.size() - 1)}) {
    writeFile(path, bytes);
    EXPECT_EQ(crypto_decrypt_file(path.c_str()), 0);
    EXPECT_EQ(contentOf(path), bytes);

    std::vector<unsigned char> buffer(bytes.begin(), bytes.end());
    EXPECT_EQ(crypto_decrypt_buffer(buffer.data(), buffer.size()), 0u);
    if (bytes.size() < 19) {
      EXPECT_EQ(std::string(buffer.begin(), buffer.end()), bytes) << "too short to be touched";
    }
  }
}

TEST(Container, FilesThatCanNotBeReadOrWrittenGiveZero) {
  const TemporaryFolder folder;
  const std::string folderPath = folder.path().string();
  for (const char* path : {static_cast<const char*>(nullptr), "", folderPath.c_str(), "/proc/self/no-such-file",
                           // Can be read, but nothing can be written beside it.
                           "/proc/self/cmdline"}) {
    EXPECT_EQ(crypto_encrypt_file(path), 0);
    EXPECT_EQ(crypto_decrypt_file(path), 0);
  }
}

}  // namespace

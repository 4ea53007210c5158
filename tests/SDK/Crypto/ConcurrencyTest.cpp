#include <atomic>

#include "Crypto/crypto.h"
#include "Support/TemporaryFolder.h"

namespace {

// Meant for ThreadSanitizer; elsewhere it still finds state that calls share.
TEST(CryptoConcurrency, ThreadsEncipherAndDecipherWithoutDisturbingEachOther) {
  const TemporaryFolder folder;
  std::atomic<int> wrong = 0;
  std::vector<std::thread> threads;
  for (int number = 0; number < 6; ++number) {
    threads.emplace_back([&folder, &wrong, number] {
      const std::string text = "text of thread " + std::to_string(number);
      const std::string path = folder.file(std::to_string(number));
      for (int round = 0; round < 50; ++round) {
        char hex[2049], password[257], longText[1025];
        crypto_encrypt_password(text.c_str(), hex, sizeof hex);
        crypto_decrypt_password(hex, password, sizeof password);
        crypto_encrypt1024(text.c_str(), hex, sizeof hex);
        crypto_decrypt1024(hex, longText, sizeof longText);
        std::string container = orvane::encipheredContainer(text);
        container.resize(crypto_decrypt_buffer(reinterpret_cast<unsigned char*>(container.data()), container.size()));
        if (password != text || longText != text || container != text) ++wrong;
      }
      writeFile(path, text);
      if (!crypto_encrypt_file(path.c_str()) || !crypto_decrypt_file(path.c_str()) || contentOf(path) != text) ++wrong;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

}  // namespace

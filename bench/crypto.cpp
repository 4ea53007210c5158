#include "Crypto/crypto.h"

#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <openssl/evp.h>
#include <openssl/provider.h>

#include "Crypto/RC4StreamCipher.h"

namespace {

constexpr size_t kMebibyte = 1 << 20;
constexpr unsigned char kKey[16] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};

void rc4(benchmark::State& state) {
  std::vector<unsigned char> buffer(kMebibyte);
  RC4StreamCipher cipher(kKey, sizeof kKey);
  for ([[maybe_unused]] auto _ : state) {
    cipher.Encrypt(buffer.data(), buffer.data(), static_cast<long>(buffer.size()));
    benchmark::DoNotOptimize(buffer.data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(kMebibyte));
}
BENCHMARK(rc4);

// The peer that the row above is to be held against.
void rc4OfOpenSsl(benchmark::State& state) {
  OSSL_PROVIDER* const legacy = OSSL_PROVIDER_load(nullptr, "legacy");
  OSSL_PROVIDER* const standard = OSSL_PROVIDER_load(nullptr, "default");
  const std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)> context(EVP_CIPHER_CTX_new(),
                                                                                EVP_CIPHER_CTX_free);
  if (!legacy || !standard || EVP_EncryptInit_ex(context.get(), EVP_rc4(), nullptr, kKey, nullptr) != 1) {
    state.SkipWithError("OpenSSL offers no RC4");
    return;
  }
  std::vector<unsigned char> buffer(kMebibyte);
  int length = 0;
  for ([[maybe_unused]] auto _ : state) {
    EVP_EncryptUpdate(context.get(), buffer.data(), &length, buffer.data(), static_cast<int>(buffer.size()));
    benchmark::DoNotOptimize(buffer.data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(kMebibyte));
}
BENCHMARK(rc4OfOpenSsl);

void encryptPassword(benchmark::State& state) {
  char hex[513];
  for ([[maybe_unused]] auto _ : state) {
    crypto_encrypt_password("correct horse battery staple", hex, sizeof hex);
    benchmark::DoNotOptimize(hex);
  }
}
BENCHMARK(encryptPassword);

void decryptPassword(benchmark::State& state) {
  char hex[513], password[257];
  crypto_encrypt_password("correct horse battery staple", hex, sizeof hex);
  for ([[maybe_unused]] auto _ : state) {
    crypto_decrypt_password(hex, password, sizeof password);
    benchmark::DoNotOptimize(password);
  }
}
BENCHMARK(decryptPassword);

}  // namespace

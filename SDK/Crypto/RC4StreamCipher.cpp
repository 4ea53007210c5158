#include "Crypto/RC4StreamCipher.h"

#include <numeric>
#include <utility>

#include "Support/SecureMemory.h"

RC4StreamCipher::RC4StreamCipher(const unsigned char* key, long keyLength) : keyLength_(keyLength) {
  std::iota(state_.begin(), state_.end(), uint8_t{0});
  uint8_t j = 0;
  for (size_t i = 0; i < state_.size(); ++i) {
    const unsigned keyByte = keyLength_ > 0 ? key[i % static_cast<size_t>(keyLength_)] : 0u;
    j = static_cast<uint8_t>(j + state_[i] + keyByte);
    std::swap(state_[i], state_[j]);
  }
}

RC4StreamCipher::~RC4StreamCipher() {
  orvane::wipe(state_.data(), state_.size());
  orvane::wipe(&i_, sizeof i_);
  orvane::wipe(&j_, sizeof j_);
}

unsigned char RC4StreamCipher::Next() {
  const unsigned char nothing = 0;
  unsigned char byte = 0;
  Encrypt(&nothing, &byte, 1);
  return byte;
}

void RC4StreamCipher::Encrypt(const unsigned char* in, unsigned char* out, long length) {
  // `out` may point anywhere as far as the compiler knows, so members would be stored and loaded again for every byte.
  uint8_t* const state = state_.data();
  unsigned i = i_;
  unsigned j = j_;
  for (long n = 0; n < length; ++n) {
    i = (i + 1) & 255u;
    const unsigned first = state[i];
    j = (j + first) & 255u;
    const unsigned second = state[j];
    state[i] = static_cast<uint8_t>(second);
    state[j] = static_cast<uint8_t>(first);
    out[n] = static_cast<unsigned char>(in[n] ^ state[(first + second) & 255u]);
  }
  i_ = static_cast<uint8_t>(i);
  j_ = static_cast<uint8_t>(j);
}

void RC4StreamCipher::Decrypt(const unsigned char* in, unsigned char* out, long length) { Encrypt(in, out, length); }

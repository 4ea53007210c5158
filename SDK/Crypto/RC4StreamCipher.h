#pragma once

#include <array>
#include <cstdint>

/// The RC4 stream cipher. One object is one key stream: it keeps its position between calls, and nothing of the stream
/// is discarded. Enciphering and deciphering are the same operation. One thread at a time for each object.
class RC4StreamCipher {
 public:
  /// `key` is `keyLength` bytes, 1 to 256; what is beyond has no effect. The key itself is not kept,
  /// and the state is wiped at the end.
  RC4StreamCipher(const unsigned char* key, long keyLength);
  ~RC4StreamCipher();
  RC4StreamCipher(const RC4StreamCipher&) = default;
  RC4StreamCipher& operator=(const RC4StreamCipher&) = default;

  /// The next byte of the key stream.
  unsigned char Next();

  /// Combines `length` bytes at `in` with the key stream into `out`, which may be the same place.
  void Encrypt(const unsigned char* in, unsigned char* out, long length);
  void Decrypt(const unsigned char* in, unsigned char* out, long length);

 private:
  std::array<uint8_t, 256> state_;
  uint8_t i_ = 0;
  uint8_t j_ = 0;
  long keyLength_;
};

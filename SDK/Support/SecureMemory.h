#pragma once

#include <cstring>
#include <string>
#include <vector>

namespace orvane {

/// Overwrites `size` bytes at `memory` with zeros, in a way that the compiler keeps. It may be null if `size` is 0.
inline void wipe(void* memory, size_t size) {
  if (size > 0) explicit_bzero(memory, size);
}

/// Overwrites all that the string's or vector's buffer may hold, beyond its size too, and empties it.
template <typename Buffer>
void wipe(Buffer& buffer) {
  buffer.resize(buffer.capacity());
  wipe(buffer.data(), buffer.size() * sizeof(typename Buffer::value_type));
  buffer.clear();
}

/// Wipes a buffer that holds a secret when its scope ends, by whatever way.
template <typename Buffer>
class WipeAtEnd {
 public:
  explicit WipeAtEnd(Buffer& buffer) : buffer_(buffer) {}
  ~WipeAtEnd() { wipe(buffer_); }
  WipeAtEnd(const WipeAtEnd&) = delete;
  WipeAtEnd& operator=(const WipeAtEnd&) = delete;

 private:
  Buffer& buffer_;
};

}  // namespace orvane

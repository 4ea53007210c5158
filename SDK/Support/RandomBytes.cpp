#include "Support/RandomBytes.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <random>

#include <sys/random.h>

namespace orvane {

namespace {

// The system's generator in the form that the standard library's distributions take.
struct SystemGenerator {
  using result_type = uint64_t;
  static constexpr result_type min() { return 0; }
  static constexpr result_type max() { return UINT64_MAX; }
  result_type operator()() const {
    result_type value = 0;
    fillWithRandomBytes(&value, sizeof value);
    return value;
  }
};

}  // namespace

void fillWithRandomBytes(void* bytes, size_t size) {
  auto* position = static_cast<unsigned char*>(bytes);
  while (size > 0) {
    const ssize_t count = getrandom(position, size, 0);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) abort();
    position += count;
    size -= static_cast<size_t>(count);
  }
}

size_t randomIndex(size_t bound) {
  SystemGenerator generator;
  return std::uniform_int_distribution<size_t>(0, bound - 1)(generator);
}

}  // namespace orvane

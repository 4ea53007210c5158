#pragma once

#include <cstddef>

namespace orvane {

/// Fills `size` bytes at `bytes` from the system's random generator. Any thread. A system without one ends the process:
/// there is no safe way on.
void fillWithRandomBytes(void* bytes, size_t size);

/// A random number from 0 to `bound` - 1, each equally likely. `bound` must not be 0. Any thread.
size_t randomIndex(size_t bound);

}  // namespace orvane

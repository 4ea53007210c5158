#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

/// @file
/// How much a keyed archive may amount to. What stands in it once can be referred to from many places, so that a few
/// hundred bytes can unfold into gigabytes for whoever follows the references.

namespace orvane {

constexpr uint64_t kMaxArchiveSize = 128U << 20;

/// What a value counts for, beside the bytes of its text: about what it takes in memory.
constexpr uint64_t kValueCost = 64;

/// How much an archive of `size` bytes may amount to when each value counts as often as it is referred to, the names of
/// fields included.
constexpr uint64_t expansionLimit(size_t size) {
  constexpr uint64_t kLargest = 512U << 20;
  return std::min<uint64_t>(kLargest, (1U << 20) + uint64_t{128} * size);
}

/// Containers within containers in the property list; an archive needs five.
constexpr unsigned int kMaxNesting = 32;
/// Objects within objects by reference; a farm's texts are the eighth.
constexpr unsigned int kMaxDepth = 64;

}  // namespace orvane

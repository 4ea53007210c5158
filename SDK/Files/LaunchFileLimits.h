#pragma once

#include <cstddef>

/// The sizes of the launch file format, in bytes.
namespace orvane {

/// A line without its end. The reader takes what is longer for a further line.
inline constexpr size_t kMaximumLineLength = 4095;

/// The buffers for a deciphered value and for an enciphered one, zeros included.
inline constexpr size_t kDecipheredCapacity = 2048;
inline constexpr size_t kEncipheredCapacity = 2049;

}  // namespace orvane

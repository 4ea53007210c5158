#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "Support/ico2png.h"

namespace orvane {

/// The bytes of a PNG file that shows the picture: RGBA, 8 bits a channel, not interlaced.
///
/// Nothing if libpng gives up, as it does at more than 1,000,000 pixels on a side and where memory runs out; why is
/// logged at level 5, as is each row. Any thread.
std::optional<std::vector<uint8_t>> pngFileOf(const IconImage& image);

}  // namespace orvane

#pragma once

#include <string_view>

#include "FarmDescription.h"

namespace orvane::demo {

/// The picture of a PNG file in the text form that brokers send, scaled to 32 x 32 and 16 x 16 at 32 bits per pixel.
/// Pixels that are less than half opaque become transparent, all others opaque. Throws std::runtime_error if `png` is
/// none or is wider or higher than 1,024 pixels.
Icon iconFromPng(std::string_view png);

}  // namespace orvane::demo

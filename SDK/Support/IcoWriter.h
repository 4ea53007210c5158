#pragma once

#include <cstdint>
#include <vector>

#include "Support/IconRecord.h"

namespace orvane {

/// The bytes of an ICO file that holds the icon. Mask and colour bits are copied as they are. Any thread.
/// @throws std::bad_alloc
std::vector<uint8_t> icoFileOf(const IconRecord& record);

}  // namespace orvane

#pragma once

#include <optional>

#include "Support/IconRecord.h"
#include "Support/ico2png.h"

namespace orvane {

/// The picture of a record; nothing if its sizes don't make one (see ico2png.h). Any thread.
/// @throws std::bad_alloc
std::optional<IconImage> iconImageOf(const IconRecord& record);

}  // namespace orvane

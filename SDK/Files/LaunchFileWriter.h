#pragma once

#include <string>

#include "Files/OvSettingsData.h"

namespace orvane {

/// Adds the text of the record's launch file, before it is enciphered as a whole, to `text`. It holds secrets: the
/// caller wipes it, also after a failure. False if a value is too long to be read back.
/// @throws std::bad_alloc if memory is short.
bool writeLaunchDocument(const OvSettingsData& record, std::string& text);

}  // namespace orvane

#pragma once

#include <string_view>

#include "Files/OvSettingsData.h"

namespace orvane {

/// Replaces the record by what one document says, enciphered or plain, without fetching the `url` that it may name.
/// Takes time in proportion to the document's size.
/// @throws std::bad_alloc or std::length_error if memory is short; the record then holds the defaults.
void readLaunchDocument(OvSettingsData& record, std::string_view document);

}  // namespace orvane

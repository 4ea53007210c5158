#pragma once

#include <cstdint>
#include <span>

namespace orvane {

/// Makes sure that a parser which follows every reference of a binary property list from its root, recursing, stays
/// within the bytes, kMaxNesting and expansionLimit(), and loses nothing: texts are what they say they are, references
/// to archived objects (UIDs) have at most 32 bits and integers at most 63 and a sign, dictionaries' keys are texts.
/// Null and sets have no place in an archive.
/// @throws KeyedArchiveError otherwise, within a time in proportion to expansionLimit().
void checkBinaryPropertyList(std::span<const uint8_t> bytes);

}  // namespace orvane

#pragma once

#include <iosfwd>

class OvSettings;

namespace orvane::demo {

/// Writes what a session of this record would be, in words, and then each field that isn't at its default, one on a
/// line. Password and ticket show only as set.
void printRecord(const OvSettings& record, std::ostream& output);

}  // namespace orvane::demo

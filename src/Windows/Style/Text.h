#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "OrvaneCommon/LocalizedText.h"

/// @file
/// Between the program's texts, UTF-8 in std::string, and the toolkit's.

namespace orvane {

inline QString toQString(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// The text of a key in the user's language. The key must stand as a literal in the call, as for localizedText().
inline QString text(std::string_view key) { return toQString(localizedText(key)); }

}  // namespace orvane

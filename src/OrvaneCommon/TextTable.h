#pragma once

#include <span>
#include <string_view>

namespace orvane {

/// The texts of data/texts, as cmake/texts-to-table.py writes them into the program.
struct TextTable {
  std::span<const std::string_view> languages;  ///< English first
  std::span<const std::string_view> keys;       ///< sorted by their bytes
  std::span<const std::string_view> texts;      ///< of each key one for each language, English where that has none
};

extern const TextTable kTextTable;

}  // namespace orvane

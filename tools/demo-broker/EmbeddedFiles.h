#pragma once

#include <span>
#include <string_view>

namespace orvane::demo {

/// A file that is built into the program.
struct EmbeddedFile {
  std::string_view name;  ///< relative to the folder of the sample farm
  std::string_view content;
};

/// The sample farm and its icons.
std::span<const EmbeddedFile> embeddedFiles();

}  // namespace orvane::demo

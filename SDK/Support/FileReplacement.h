#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace orvane {

/// Makes `path` a file of mode 0600 with exactly these bytes, as one step: they are written beside it under a random
/// name, brought to disk and renamed into place. Whoever reads `path` sees the old content or the new, never a mixture,
/// and so does the next start after a crash. A symbolic link at `path` is replaced, not followed.
///
/// Returns false, with errno telling why, if any step fails; `path` is then as it was and nothing is left beside it.
/// Any thread.
bool replaceFile(const std::string& path, const void* bytes, size_t size);

/// The whole content of a regular file, or nothing if it can't be opened, isn't a regular file or can't be read to its
/// end. Any thread.
std::optional<std::string> readFile(const std::string& path);

}  // namespace orvane

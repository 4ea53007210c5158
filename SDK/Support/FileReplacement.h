#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "Support/FileDescriptor.h"

namespace orvane {

/// A file that is written beside its final place and moved there as one step: whoever reads `path` sees the old content
/// or the new, never a mixture, and so does the next start after a crash. The new file has mode 0600; a symbolic link
/// at `path` is replaced, not followed.
///
/// For content that comes in pieces; for bytes at hand there is replaceFile. All that fails returns false, with errno
/// telling why, and leaves `path` as it was; after a failure, that of the constructor included, all else fails
/// likewise. Not moved into place, the new file vanishes with this object. One thread at a time.
class FileReplacement {
 public:
  /// Opens the new file under a random name in the folder of `path`.
  explicit FileReplacement(const std::string& path);
  ~FileReplacement();
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;

  bool append(const void* bytes, size_t size);
  /// Brings the content to disk and makes it the file at `path`. To be called once, at the end.
  bool moveIntoPlace();

 private:
  const std::string path_;
  std::string beside_;
  FileDescriptor file_;
  bool isBeside_;
  int failure_;  // the errno of the first failure, or 0
};

/// Makes `path` a file of mode 0600 with exactly these bytes, as one step, in the way of FileReplacement.
///
/// Returns false, with errno telling why, if any step fails; `path` is then as it was and nothing is left beside it.
/// Any thread.
bool replaceFile(const std::string& path, const void* bytes, size_t size);

/// The whole content of a regular file, or nothing if it can't be opened, isn't a regular file, is too large for the
/// memory or can't be read to its end. Any thread.
std::optional<std::string> readFile(const std::string& path);

}  // namespace orvane

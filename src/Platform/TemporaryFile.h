#pragma once

#include <string>

namespace orvane {

/// A file of mode 0600 and of a new name, which vanishes with the object unless it is moved to its place. Empty at
/// first. One thread at a time.
class TemporaryFile {
 public:
  /// @param path  with "XXXXXX" before its last `suffixLength` bytes, which random characters take the place of.
  explicit TemporaryFile(std::string path, int suffixLength = 0);
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const std::string& path() const { return path_; }
  /// Whether it could be made, and has not been moved.
  bool isThere() const { return isThere_; }
  /// Makes it the file at `path`, of the same file system, in one step. False, with errno telling why, if that fails.
  bool moveTo(const std::string& path);

 private:
  std::string path_;
  bool isThere_;
};

}  // namespace orvane

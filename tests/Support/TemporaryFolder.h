#pragma once

#include <filesystem>
#include <string>

/// A folder of a test's own (mode 0700) that vanishes with all it holds when the object does.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  /// The path of a file of this name in the folder, whether it exists or not.
  std::string file(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

/// All bytes of a file; empty if it can't be read.
std::string contentOf(const std::filesystem::path& file);
/// A file's permissions and special bits, as 0644; 0 if it doesn't exist.
unsigned modeOf(const std::filesystem::path& file);
void writeFile(const std::filesystem::path& file, const std::string& content);

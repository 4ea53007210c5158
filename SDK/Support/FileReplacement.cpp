#include "Support/FileReplacement.h"

#include <cerrno>
#include <cstdlib>
#include <exception>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvane {

namespace {

bool writeAll(int file, const char* bytes, size_t size) {
  while (size > 0) {
    const ssize_t written = write(file, bytes, size);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes += written;
    size -= static_cast<size_t>(written);
  }
  return true;
}

// The rename itself is on disk only once its folder is. A folder that can't be opened for reading still holds the file.
void syncFolderOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
  const FileDescriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (descriptor.isOpen()) fsync(descriptor.number());
}

}  // namespace

FileReplacement::FileReplacement(const std::string& path)
    : path_(path),
      beside_(path + ".XXXXXX"),
      file_(mkostemp(beside_.data(), O_CLOEXEC)),  // creates it 0600
      isBeside_(file_.isOpen()),
      failure_(isBeside_ ? 0 : errno) {}

FileReplacement::~FileReplacement() {
  const int callersErrno = errno;
  if (isBeside_) unlink(beside_.c_str());
  errno = callersErrno;
}

bool FileReplacement::append(const void* bytes, size_t size) {
  if (failure_ == 0 && !writeAll(file_.number(), static_cast<const char*>(bytes), size)) failure_ = errno;
  errno = failure_;
  return failure_ == 0;
}

bool FileReplacement::moveIntoPlace() {
  if (failure_ == 0) {
    isBeside_ = fsync(file_.number()) != 0 || !file_.close() || rename(beside_.c_str(), path_.c_str()) != 0;
    if (isBeside_) failure_ = errno;
  }
  if (failure_ == 0) syncFolderOf(path_);
  errno = failure_;
  return failure_ == 0;
}

bool replaceFile(const std::string& path, const void* bytes, size_t size) {
  FileReplacement replacement(path);
  return replacement.append(bytes, size) && replacement.moveIntoPlace();
}

std::optional<std::string> readFile(const std::string& path) {
  // Not blocking: a pipe at this path must not hold up whoever only wants to look.
  const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (!file.isOpen() || fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  std::string content;
  try {
    content.resize(static_cast<size_t>(status.st_size));
  } catch (const std::exception&) {  // a file may claim any size
    return std::nullopt;
  }
  size_t done = 0;
  while (done < content.size()) {
    const ssize_t count = read(file.number(), content.data() + done, content.size() - done);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return std::nullopt;
    done += static_cast<size_t>(count);
  }
  return content;
}

}  // namespace orvane

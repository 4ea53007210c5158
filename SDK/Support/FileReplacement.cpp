#include "Support/FileReplacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <utility>

namespace orvane {

namespace {

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int number() const { return number_; }
  bool close() { return ::close(std::exchange(number_, -1)) == 0; }

 private:
  int number_;
};

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
  const Descriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (descriptor.number() >= 0) fsync(descriptor.number());
}

}  // namespace

bool replaceFile(const std::string& path, const void* bytes, size_t size) {
  std::string beside = path + ".XXXXXX";
  Descriptor file(mkostemp(beside.data(), O_CLOEXEC));  // creates it 0600
  if (file.number() < 0) return false;
  if (writeAll(file.number(), static_cast<const char*>(bytes), size) && fsync(file.number()) == 0 && file.close() &&
      rename(beside.c_str(), path.c_str()) == 0) {
    syncFolderOf(path);
    return true;
  }
  const int reason = errno;
  unlink(beside.c_str());
  errno = reason;
  return false;
}

std::optional<std::string> readFile(const std::string& path) {
  // Not blocking: a pipe at this path must not hold up whoever only wants to look.
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (file.number() < 0 || fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  std::string content(static_cast<size_t>(status.st_size), '\0');
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

#pragma once

#include <cerrno>
#include <utility>

#include <unistd.h>

namespace orvane {

/// Owns an open file of the system and closes it when its scope ends, which leaves errno alone. Negative: none is open.
class FileDescriptor {
 public:
  explicit FileDescriptor(int number) : number_(number) {}
  ~FileDescriptor() {
    const int callersErrno = errno;
    close();
    errno = callersErrno;
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;

  int number() const { return number_; }
  bool isOpen() const { return number_ >= 0; }
  /// Closes now; false if what was written may not have reached the file, or none was open.
  bool close() { return number_ >= 0 && ::close(std::exchange(number_, -1)) == 0; }

 private:
  int number_;
};

}  // namespace orvane

#include "Platform/TemporaryFile.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include "Support/FileDescriptor.h"

namespace orvane {

TemporaryFile::TemporaryFile(std::string path, int suffixLength)
    : path_(std::move(path)), isThere_(FileDescriptor(mkostemps(path_.data(), suffixLength, O_CLOEXEC)).isOpen()) {}

TemporaryFile::~TemporaryFile() {
  if (isThere_) unlink(path_.c_str());
}

bool TemporaryFile::moveTo(const std::string& path) {
  if (rename(path_.c_str(), path.c_str()) != 0) return false;
  isThere_ = false;
  return true;
}

}  // namespace orvane

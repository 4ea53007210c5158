#include "Support/FileUtilities.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Support/FileDescriptor.h"
#include "Support/FileReplacement.h"

using orvane::FileDescriptor;
using orvane::FileReplacement;

namespace {

constexpr char kTemporaryName[] = P_tmpdir "/fileXXXXXX";
static_assert(sizeof kTemporaryName <= L_tmpnam);

// A rename would put a file in the place of these, where a write would have gone through them.
bool isSpecial(const char* path) {
  struct stat status {};
  return stat(path, &status) == 0 && !S_ISREG(status.st_mode);
}

bool copyContent(const FileDescriptor& source, FileReplacement& target) {
  std::array<char, 65536> block;
  for (;;) {
    const ssize_t count = read(source.number(), block.data(), block.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return count == 0;
    if (!target.append(block.data(), static_cast<size_t>(count))) return false;
  }
}

}  // namespace

int ovutils_copy_file(const char* source, const char* target, int failIfExists) {
  if (!source || !target || isSpecial(target)) return 0;
  if (failIfExists && ovutils_file_exists(target)) return 0;
  const FileDescriptor from(open(source, O_RDONLY | O_CLOEXEC));
  if (!from.isOpen()) return 0;
  FileReplacement to(target);
  if (!to.append(nullptr, 0)) return 0;
  if (copyContent(from, to) && to.moveIntoPlace()) return 1;
  unlink(target);
  return 0;
}

bool ovutils_file_exists(const char* path) {
  // Not blocking: a pipe that nobody writes to exists too.
  return path && FileDescriptor(open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK)).isOpen();
}

int ovutils_get_temp_filename(char* buffer) {
  memcpy(buffer, kTemporaryName, sizeof kTemporaryName);
  if (FileDescriptor(mkostemp(buffer, O_CLOEXEC)).isOpen()) return 1;
  *buffer = '\0';
  return 0;
}

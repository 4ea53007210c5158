#include <cerrno>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Sessions/CONTEXTSTRUCT.h"
#include "Support/OvWriteLog.h"

namespace orvane {

namespace {

constexpr size_t kSize = sizeof(OvSharedSegment);

// Returns -1, with the reason in errno, if it can't be opened or is another user's, who could change it at will.
int openOwnSegment(const std::string& name) {
  const int file = shm_open(name.c_str(), O_RDWR | O_CREAT, 0644);
  if (file < 0) return -1;
  struct stat status {};
  if (fstat(file, &status) == 0 && status.st_uid == geteuid()) return file;
  close(file);
  errno = EACCES;
  return -1;
}

// For a segment that isn't mapped here.
bool isUsedByOthers(int file) {
  uint32_t refCount = 0;
  return pread(file, &refCount, sizeof refCount, offsetof(OvSharedSegment, refCount)) == sizeof refCount &&
         refCount > 0;
}

}  // namespace

bool openSharedMemory(CONTEXTSTRUCT& context, const char* function) {
  context.fdSharedMemory = openOwnSegment(context.names.sharedMemory);
  if (context.fdSharedMemory < 0) {
    OvWriteLog(2, "%s: error opening shared memory segment (errno=%d)", function, errno);
    return false;
  }
  if (ftruncate(context.fdSharedMemory, kSize) != 0) {
    OvWriteLog(2, "%s: error truncating shared memory segment (errno=%d)", function, errno);
  }
  // A page that the file lacks, or that a full file system can't give, would end us at its first use.
  int reason = 0;
  do {
    reason = posix_fallocate(context.fdSharedMemory, 0, kSize);
  } while (reason == EINTR);
  if (reason != 0) {
    OvWriteLog(2, "%s: error reserving shared memory segment (errno=%d)", function, reason);
    closeSharedMemory(context);
    return false;
  }
  void* const memory = mmap(nullptr, kSize, PROT_READ | PROT_WRITE, MAP_SHARED, context.fdSharedMemory, 0);
  if (memory == MAP_FAILED) {
    OvWriteLog(2, "%s: error mapping shared memory segment (errno=%d)", function, errno);
    closeSharedMemory(context);
    return false;
  }
  context.pSharedMemory = static_cast<OvSharedSegment*>(memory);
  if (context.pSharedMemory->nextSessionId == 0) context.pSharedMemory->nextSessionId = 1;
  ++context.pSharedMemory->refCount;
  return true;
}

void closeSharedMemory(CONTEXTSTRUCT& context) {
  bool isUsed = false;
  if (context.pSharedMemory) {
    uint32_t& refCount = context.pSharedMemory->refCount;
    if (refCount > 0) --refCount;
    isUsed = refCount > 0;
  } else {
    isUsed = isUsedByOthers(context.fdSharedMemory);
  }
  abandonSharedMemory(context);
  // Still within the turn: after it, another process could have opened what has no name any more.
  if (!isUsed) shm_unlink(context.names.sharedMemory.c_str());
}

void abandonSharedMemory(CONTEXTSTRUCT& context) {
  if (context.pSharedMemory) munmap(context.pSharedMemory, kSize);
  context.pSharedMemory = nullptr;
  close(context.fdSharedMemory);
  context.fdSharedMemory = -1;
}

}  // namespace orvane

#pragma once

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include <semaphore.h>
#include <sys/mman.h>

#include "Sessions/SessionRegistryNames.h"
#include "Support/OvWriteLog.h"
#include "Support/TemporaryFolder.h"

/// A registry of a test's own, which vanishes with all that dead processes left in it, and a log.
class TestRegistry {
 public:
  TestRegistry() { OvSetLogFile(log_.c_str()); }
  ~TestRegistry() {
    OvSetLogFile(nullptr);
    OvSetLogLevel(2);
    sem_unlink(names.semaphore.c_str());
    shm_unlink(names.sharedMemory.c_str());
  }

  bool hasSegment() const { return std::filesystem::exists("/dev/shm" + names.sharedMemory); }
  size_t socketCount() const {
    size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) count += entry.is_socket();
    return count;
  }
  /// The messages of the log so far, without time and identifiers.
  std::vector<std::string> logged() const {
    std::istringstream stream(contentOf(log_));
    std::vector<std::string> messages;
    for (std::string line; std::getline(stream, line);) {
      messages.push_back(line.substr(line.find(": ", line.find(": ") + 2) + 2));
    }
    return messages;
  }

 private:
  const TemporaryFolder folder_;
  const std::string log_ = folder_.file("log");
  const std::string base_ = "/" + folder_.path().filename().string();

 public:
  const orvane::SessionRegistryNames names{base_ + ".mutex", base_ + ".shared", folder_.file("socket")};
};

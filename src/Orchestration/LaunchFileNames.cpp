// What launch files are called.

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>

#include "Orchestration/ApplicationLauncher.h"
#include "Support/FileDescriptor.h"
#include "Support/OvWriteLog.h"

namespace {

// Leaves room for a number, and for what a file is called while it is written.
constexpr size_t kLongestName = 200;

bool isUnfit(char byte) { return byte == '/' || static_cast<unsigned char>(byte) < ' ' || byte == '\x7F'; }

std::string fileNameFor(std::string appName) {
  std::ranges::replace_if(appName, isUnfit, '_');
  if (appName.size() > kLongestName) {
    size_t end = kLongestName;
    while (end > 0 && (appName[end] & 0xC0) == 0x80) --end;  // not within a character
    appName.resize(end);
  }
  return appName.empty() || appName == "." || appName == ".." ? "_" + appName : appName;
}

}  // namespace

std::optional<std::string> ApplicationLauncher::formatOvlfileNameForApp(const std::string& appName) const {
  const std::string folder = environment_.launchFolder();
  if (folder.empty()) return std::nullopt;
  const std::string path = folder + "/" + fileNameFor(appName);
  std::string candidate = path;
  for (uint64_t number = 1;; ++number) {
    const orvane::FileDescriptor file(open(candidate.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (file.isOpen()) return candidate;
    if (errno != EEXIST) {
      OvWriteLog(2, "%s: Cannot make %s: %s", __func__, candidate.c_str(), strerrordesc_np(errno));
      return std::nullopt;
    }
    candidate = path + std::to_string(number);
  }
}

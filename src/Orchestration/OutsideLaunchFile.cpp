#include "Orchestration/OutsideLaunchFile.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

#include "Http/Downloads.h"
#include "Orchestration/BrokerControllerError.h"
#include "Orchestration/FlowTexts.h"
#include "OrvaneCommon/WebAddress.h"
#include "Support/FileDescriptor.h"
#include "Support/OvWriteLog.h"

namespace orvane {
namespace {

constexpr const char* kFunction = "launchAppWithOvlFile";

// Anything at all reads as a launch file, the page with which a server says no included.
bool leadsSomewhere(const OvSettings& settings) {
  const char* const targets[] = {settings.getServerName(), settings.getServerAddr(), settings.getComputer(),
                                 settings.getBrokerServers(), settings.getProgramFullPath()};
  return std::ranges::any_of(targets, [](const char* target) { return target != nullptr && *target != '\0'; });
}

// An empty file of a new name beside another one; it vanishes with the object.
class FileBeside {
 public:
  explicit FileBeside(const std::string& path)
      : path_(path + ".XXXXXX"), isThere_(FileDescriptor(mkostemp(path_.data(), O_CLOEXEC)).isOpen()) {}
  ~FileBeside() {
    if (isThere_) unlink(path_.c_str());
  }
  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;

  const std::string& path() const { return path_; }
  bool isThere() const { return isThere_; }
  bool moveTo(const std::string& path) {
    if (rename(path_.c_str(), path.c_str()) != 0) return false;
    isThere_ = false;
    return true;
  }

 private:
  std::string path_;
  bool isThere_;
};

OvError failure(const char* reason, const char* textKey) {
  OvWriteLog(2, "%s: %s", kFunction, reason);
  return OvU_MakeNSError(static_cast<int>(BrokerControllerError::kLaunchFileUnreadable), localizedText(textKey));
}

}  // namespace

std::optional<OvError> loadOutsideLaunchFile(const std::string& path, OvSettings& settings) {
  if (settings.loadOvlFile(path.c_str())) return std::nullopt;
  const std::string url = settings.getURL() == nullptr ? "" : settings.getURL();
  if (url.empty()) {
    OvWriteLog(2, "%s: Failed to load settings from ovl-file", kFunction);
    return getErrorForBrokerControllerErrorCode(BrokerControllerError::kLaunchFileUnreadable);
  }
  FileBeside fetched(path);
  if (!isWebAddress(url) || !fetched.isThere() || !ovutilsext_download_url(url.c_str(), fetched.path().c_str())) {
    return failure("Failed to load ovl file from URL", kLaunchFileNotFetched);
  }
  if (!settings.loadOvlFile(fetched.path().c_str()) || !leadsSomewhere(settings)) {
    return failure("Failed to load settings from ovl-file dowloaded from URL", kFetchedLaunchFileUnreadable);
  }
  // A document that has its file removed is gone by now, and would be at its place.
  if (!fetched.moveTo(path)) unlink(path.c_str());
  return std::nullopt;
}

}  // namespace orvane

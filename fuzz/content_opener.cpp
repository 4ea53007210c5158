// Any text as the program path of a launch record: what the desktop is asked to open or mount is an address that no
// program takes for anything else, and leads nowhere but where the text says.

#include <cstdint>
#include <cstdlib>

#include "Orchestration/ContentOpener.h"

namespace {

void require(bool holds) {
  if (!holds) abort();
}

class CheckingOpener final : public orvane::Opener {
 public:
  bool openAddress(const std::string& address) override {
    require(address.find("://") != std::string::npos);
    for (const char character : address) require(static_cast<unsigned char>(character) >= 0x20 && character != 0x7F);
    ++opened;
    return true;
  }
  bool mountShare(const std::string& address) override {
    require(address.starts_with("smb://"));
    require(address.find_first_of(" \"\\?#@:", 6) == std::string::npos);
    require((address + "/").find("/../") == std::string::npos);
    ++mounted;
    return true;
  }
  std::optional<std::string> mountedPath(const std::string&) override { return std::nullopt; }

  int opened = 0;
  int mounted = 0;
};

class CountingQueue final : public orvane::GlobalQueue {
 public:
  void post(orvane::Work work) override {
    ++posted;
    work();
  }

  int posted = 0;
};

// Time passes at once.
class ImpatientTimer final : public orvane::Timer {
 public:
  void after(std::chrono::milliseconds, orvane::Work work) override { work(); }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const auto desktop = std::make_shared<CheckingOpener>();
  const auto queue = std::make_shared<CountingQueue>();
  ContentOpener opener(desktop, queue, std::make_shared<ImpatientTimer>());
  const bool result = opener.MCOpenAppContent(text);
  require(desktop->opened == (result ? 1 : 0));
  require(desktop->mounted == 0 || (ContentOpener::isNetworkPath(text) && queue->posted == 180));
  if (const auto path = ContentOpener::getPathForMountAndFilename(text)) {
    require(path->mountPath.ends_with(path->mountName) && !path->mountName.empty() && !path->fileName.empty());
    require(path->mountPath.size() + path->fileName.size() + 5 == size);
  }
  return 0;
}

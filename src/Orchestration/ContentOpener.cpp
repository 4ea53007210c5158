#include "Orchestration/ContentOpener.h"

#include <algorithm>
#include <climits>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include <sys/stat.h>

#include "Orchestration/UrlEscaping.h"
#include "Support/OvWriteLog.h"

using orvane::GlobalQueue;
using orvane::Opener;
using orvane::Timer;
using NetworkPath = ContentOpener::NetworkPath;

namespace {

constexpr int kLooksForMount = 180;
constexpr std::chrono::seconds kLookInterval{1};

bool isControlCharacter(char character) { return static_cast<unsigned char>(character) < 0x20 || character == 0x7F; }

bool fileExists(const std::string& path) {
  struct stat ignored;
  return stat(path.c_str(), &ignored) == 0;
}

// The address names no host: openers take one with "localhost" for a web address, or leave the escapes in it.
void openFile(Opener& opener, const std::string& path) {
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(path, error);
  opener.openAddress("file://" + orvane::escapedPath(error ? path : absolute.string()));
}

// Asked anew for each look: the desktop tells the place once the share is mounted.
std::string placeOf(const NetworkPath& file, Opener& opener) {
  const std::optional<std::string> folder = opener.mountedPath(file.mountPath);
  return folder.value_or("/Volumes/" + file.mountName) + "/" + file.fileName;
}

// Looks for a file until it is there or there have been enough looks, and then opens it. Between the looks the timer
// or the queue owns this.
class WaitForMount : public std::enable_shared_from_this<WaitForMount> {
 public:
  WaitForMount(NetworkPath file, std::shared_ptr<Opener> opener, std::shared_ptr<GlobalQueue> queue,
               std::shared_ptr<Timer> timer)
      : file_(std::move(file)), opener_(std::move(opener)), queue_(std::move(queue)), timer_(std::move(timer)) {}

  void postLook() {
    queue_->post([self = shared_from_this()] { self->look(); });
  }

 private:
  void look() {
    const std::string place = placeOf(file_, *opener_);
    if (++looks_ == kLooksForMount || fileExists(place)) {
      openFile(*opener_, place);
    } else {
      timer_->after(kLookInterval, [self = shared_from_this()] { self->postLook(); });
    }
  }

  const NetworkPath file_;
  const std::shared_ptr<Opener> opener_;
  const std::shared_ptr<GlobalQueue> queue_;
  const std::shared_ptr<Timer> timer_;
  int looks_ = 0;
};

bool isNameOfFolderOrFile(std::string_view part) { return !part.empty() && part != "." && part != ".."; }

// Whether "server/share/folder/file" leads to where it seems to.
bool allPartsAreNames(std::string_view path) {
  size_t end;
  while ((end = path.find('/')) != std::string_view::npos) {
    if (!isNameOfFolderOrFile(path.substr(0, end))) return false;
    path.remove_prefix(end + 1);
  }
  return isNameOfFolderOrFile(path);
}

}  // namespace

ContentOpener::ContentOpener(std::shared_ptr<Opener> opener, std::shared_ptr<GlobalQueue> queue,
                             std::shared_ptr<Timer> timer)
    : opener_(std::move(opener)), queue_(std::move(queue)), timer_(std::move(timer)) {}

bool ContentOpener::MCOpenAppContent(const std::string& programPath) {
  if (std::ranges::any_of(programPath, isControlCharacter)) {
    OvWriteLog(2, "%s: control characters can't be opened", "MCOpenAppContent");
    return false;
  }
  if (isNetworkPath(programPath)) return openNetworkFile(programPath);

  std::string target = programPath;
  if (target.starts_with('"')) target.erase(0, 1);
  if (target.ends_with('"')) target.pop_back();
  if (fileExists(target)) {
    openFile(*opener_, target);
    return true;
  }
  if (target.starts_with('/')) {
    OvWriteLog(2, "%s: there is no file \"%s\"", "MCOpenAppContent", target.c_str());
    return false;
  }
  opener_->openAddress(target.find("://") == std::string::npos ? "http://" + target : target);
  return true;
}

bool ContentOpener::openNetworkFile(const std::string& programPath) {
  std::optional<NetworkPath> file = getPathForMountAndFilename(programPath);
  if (!file) {
    OvWriteLog(2, "%s: not the path of a file in the network", "MCOpenAppContent");
    return false;
  }
  if (const std::string place = placeOf(*file, *opener_); fileExists(place)) {
    openFile(*opener_, place);
    return true;
  }
  opener_->mountShare("smb://" + orvane::escapedPath(file->mountPath));
  std::make_shared<WaitForMount>(std::move(*file), opener_, queue_, timer_)->postLook();
  return true;
}

bool ContentOpener::isNetworkPath(const std::string& programPath) {
  return programPath.find("\\\\") != std::string::npos;
}

std::optional<NetworkPath> ContentOpener::getPathForMountAndFilename(const std::string& programPath) {
  constexpr std::string_view kStart = "\"\\\\";
  if (programPath.size() <= kStart.size() || programPath.size() > PATH_MAX || !programPath.starts_with(kStart) ||
      !programPath.ends_with('"')) {
    return std::nullopt;
  }
  std::string path = programPath.substr(kStart.size(), programPath.size() - kStart.size() - 1);
  const size_t fileSeparator = path.rfind('\\');
  if (fileSeparator == std::string::npos) return std::nullopt;
  std::ranges::replace(path, '\\', '/');
  if (!allPartsAreNames(path)) return std::nullopt;

  NetworkPath result{.mountPath = path.substr(0, fileSeparator), .fileName = path.substr(fileSeparator + 1)};
  result.mountName = result.mountPath.substr(result.mountPath.rfind('/') + 1);
  return result;
}

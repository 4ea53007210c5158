#include "OrvaneCommon/OvUPaths.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

#include "Platform/UserFolders.h"
#include "Support/FileDescriptor.h"

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kEmptyPropertyList =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict/>
</plist>
)";

}  // namespace

std::string OvU_GetOrvaneDirPath() { return orvane::configurationFolder(); }

std::string OvU_GetOrvaneSettingsPath() {
  const std::string path = OvU_GetOrvaneDirPath() + "/OrvaneSettings";
  // Never in place of a file: another process may be saving its preferences at this moment.
  const orvane::FileDescriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
  // A file that stays short is read as one without preferences, too.
  if (file.isOpen()) static_cast<void>(!write(file.number(), kEmptyPropertyList.data(), kEmptyPropertyList.size()));
  return path;
}

std::string OvU_GetTempDirPath() { return orvane::temporaryFolder(); }

std::string OvU_GetOrvaneConnectionPath() {
  std::error_code error;  // leaves an empty path
  return OvU_GetOrvaneConnectionPath(orvane::bundleOfProgram(fs::read_symlink("/proc/self/exe", error).string()));
}

std::string OvU_GetOrvaneConnectionPath(const std::string& bundlePath) {
  if (bundlePath.empty()) return "";
  const fs::path bundle = bundlePath;
  const fs::path base = bundle.filename() == "Orvane.app" ? bundle / "Contents/Applications" : bundle.parent_path();
  return (base / "Orvane Connection.app").string() + "/Contents/MacOS/Orvane Connection";
}

std::string OvU_GetFlashPlayerPath(const std::string& systemPlugIns) {
  for (const std::string& plugIns : {systemPlugIns, orvane::homeFolder() + "/.mozilla/plugins"}) {
    const std::string path = plugIns + "/libflashplayer.so";
    if (access(path.c_str(), F_OK) == 0) return path;
  }
  return "";
}

bool OvU_IsFlashPlayerInstalled() { return !OvU_GetFlashPlayerPath().empty(); }

std::string OvU_CreateUniqueSubDir(const std::string& folder) {
  std::string path = folder + "/clipboard.XXXXXX";
  return mkdtemp(path.data()) != nullptr ? path : "";
}

namespace orvane {

std::string bundleOfProgram(const std::string& executable) {
  const fs::path program = executable;
  const fs::path inside = program.parent_path();
  const fs::path bundle = inside.parent_path().parent_path();
  const bool isBundle =
      inside.filename() == "MacOS" && inside.parent_path().filename() == "Contents" && bundle.extension() == ".app";
  return isBundle ? bundle.string() : executable;
}

}  // namespace orvane

#include "Platform/UserFolders.h"

#include <cstdlib>
#include <vector>

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Support/FileDescriptor.h"

namespace orvane {

namespace {

constexpr const char* kOurName = "Orvane";
constexpr mode_t kOthersBits = S_IRWXG | S_IRWXO;

// The variable's value if it is an absolute path, else an empty text.
std::string absolutePathIn(const char* variable) {
  const char* value = getenv(variable);
  return value != nullptr && value[0] == '/' ? value : "";
}

std::string baseFolder(const char* variable, const char* defaultBelowHome) {
  const std::string base = absolutePathIn(variable);
  return base.empty() ? homeFolder() + defaultBelowHome : base;
}

std::string ourFolderIn(const std::string& base, const std::string& name = kOurName) {
  const std::string folder = base + "/" + name;
  for (size_t slash = folder.find('/', 1); slash != std::string::npos; slash = folder.find('/', slash + 1)) {
    mkdir(folder.substr(0, slash).c_str(), S_IRWXU);
  }
  privateFolder(folder);  // closes one that is there to others
  return folder;
}

// The session's folder for such files, or an empty text unless it is as the standard wants it.
std::string runtimeFolder() {
  const std::string folder = absolutePathIn("XDG_RUNTIME_DIR");
  struct stat status {};
  const bool usable = !folder.empty() && stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
                      status.st_uid == geteuid() && (status.st_mode & kOthersBits) == 0;
  return usable ? folder : "";
}

}  // namespace

std::string homeFolder() {
  const std::string home = absolutePathIn("HOME");
  if (!home.empty()) return home;
  std::vector<char> buffer(16384);
  passwd entry{};
  passwd* found = nullptr;
  getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found);
  return found != nullptr && found->pw_dir[0] == '/' ? found->pw_dir : "/";
}

std::string configurationFolder() { return ourFolderIn(baseFolder("XDG_CONFIG_HOME", "/.config")); }

std::string autostartFolder() { return baseFolder("XDG_CONFIG_HOME", "/.config") + "/autostart"; }

std::string dataFolder(const std::string& name) {
  return ourFolderIn(baseFolder("XDG_DATA_HOME", "/.local/share"), name);
}

std::string stateFolder() { return ourFolderIn(baseFolder("XDG_STATE_HOME", "/.local/state")); }

std::string temporaryFolder(const std::string& lastResort) {
  const std::string runtime = runtimeFolder();
  const std::string folder = runtime.empty() ? "" : privateFolder(runtime + "/" + kOurName);
  return folder.empty() ? privateFolder(lastResort) : folder;
}

std::string privateFolder(const std::string& path) {
  mkdir(path.c_str(), S_IRWXU);
  // What is checked is what is open: the name may mean something else a moment later only if the user does that.
  const FileDescriptor folder(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  struct stat status {};
  if (!folder.isOpen() || fstat(folder.number(), &status) != 0 || status.st_uid != geteuid()) return "";
  if ((status.st_mode & kOthersBits) != 0 && fchmod(folder.number(), S_IRWXU) != 0) return "";
  return path;
}

}  // namespace orvane

#include "Platform/Linux/Desktop/AutostartEntry.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <sstream>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

#include "Platform/Linux/Desktop/ApplicationIdentity.h"
#include "Platform/UserFolders.h"
#include "Support/FileReplacement.h"
#include "Support/OvWriteLog.h"

namespace orvane {
namespace {

std::string entryPath() { return autostartFolder() + "/" + kApplicationId + ".desktop"; }

// A text as the value of a key.
std::string escaped(const std::string& text) {
  std::string value;
  for (const char character : text) {
    if (character == '\n') {
      value += "\\n";
    } else {
      value += character == '\\' ? "\\\\" : std::string(1, character);
    }
  }
  return value;
}

// A text as one word of a command.
std::string quoted(const std::string& text) {
  std::string word = "\"";
  for (const char character : text) {
    if (std::strchr("\"`$\\", character) != nullptr) word += '\\';
    if (character == '%') word += '%';
    word += character;
  }
  return word + '"';
}

std::string withoutSpaces(const std::string& text) {
  const size_t first = text.find_first_not_of(" \t\r");
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" \t\r") + 1 - first);
}

// Whether the desktop's settings have switched the entry off: some hide it, some have a key of their own.
bool isSwitchedOff(const std::string& entry) {
  std::istringstream lines(entry);
  std::string group;
  for (std::string line; std::getline(lines, line);) {
    line = withoutSpaces(line);
    if (line.starts_with('[')) group = line;
    const size_t equals = line.find('=');
    if (group != "[Desktop Entry]" || equals == std::string::npos) continue;
    const std::string key = withoutSpaces(line.substr(0, equals)), value = withoutSpaces(line.substr(equals + 1));
    if ((key == "Hidden" && value == "true") || (key == "X-GNOME-Autostart-enabled" && value == "false")) return true;
  }
  return false;
}

bool done(bool isDone, const char* function) {
  if (!isDone) OvWriteLog(2, "%s: %s: %s", function, entryPath().c_str(), strerror(errno));
  return isDone;
}

}  // namespace

AutostartEntry::AutostartEntry(std::string program) : program_(std::move(program)) {}

bool AutostartEntry::isEnabled() const {
  const std::optional<std::string> entry = readFile(entryPath());
  return entry && !isSwitchedOff(*entry);
}

bool AutostartEntry::setEnabled(bool isEnabled) {
  const std::string path = entryPath();
  if (!isEnabled) return done(unlink(path.c_str()) == 0 || errno == ENOENT, __func__);
  const std::string entry =
      "[Desktop Entry]\n"
      "Type=Application\n"
      "Name=Orvane\n"
      "Icon=" +
      std::string(kApplicationId) + "\nTryExec=" + escaped(program_) + "\nExec=" + escaped(quoted(program_)) +
      " --background\n"
      "Terminal=false\n"
      "StartupNotify=false\n";
  std::error_code ignored;  // a folder that can't be made shows as a file that can't
  std::filesystem::create_directories(autostartFolder(), ignored);
  return done(replaceFile(path, entry.data(), entry.size()) && chmod(path.c_str(), 0644) == 0, __func__);
}

}  // namespace orvane

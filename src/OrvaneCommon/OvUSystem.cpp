#include "OrvaneCommon/OvUSystem.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <sstream>

#include <sys/utsname.h>

namespace {

// The kernel makes some files up as they are read: they don't tell their size. Empty for what can't be read.
std::string contentOf(const std::string& path) {
  const std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  if (file) text << file.rdbuf();
  return text.str();
}

std::string kernelValue(const std::string& path) {
  std::string text = contentOf(path);
  if (text.ends_with('\n')) text.pop_back();
  return text;
}

std::string osRelease(std::string_view key) {
  const std::string text = contentOf("/etc/os-release");
  return orvane::osReleaseValue(text.empty() ? contentOf("/usr/lib/os-release") : text, key);
}

utsname kernelNames() {
  utsname names{};
  uname(&names);
  return names;
}

bool isNameCharacter(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9') || character == '_' || character == '-' || character == '.';
}

}  // namespace

int OvU_GetOSVersion() { return orvane::majorVersion(osRelease("VERSION_ID")); }

std::string OvU_GetSystemInfo(const std::string& name) {
  if (name == "hw.model") return kernelValue("/sys/class/dmi/id/product_name");
  if (name == "hw.machine") return kernelNames().machine;
  if (!std::ranges::all_of(name, isNameCharacter) || ("." + name + ".").find("..") != std::string::npos) return "";
  std::string path = name;
  std::ranges::replace(path, '.', '/');
  return kernelValue("/proc/sys/" + path);
}

namespace orvane {

std::string operatingSystemDescription() {
  const std::string description = osRelease("PRETTY_NAME");
  const utsname names = kernelNames();
  return description.empty() ? std::string(names.sysname) + " " + names.release : description;
}

std::string osReleaseValue(std::string_view text, std::string_view key) {
  std::istringstream lines{std::string(text)};
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with(key) || line.substr(key.size(), 1) != "=") continue;
    const std::string value = line.substr(key.size() + 1);
    const bool quoted =
        value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front();
    return quoted ? value.substr(1, value.size() - 2) : value;
  }
  return "";
}

int majorVersion(std::string_view version) {
  int number = 0;
  std::from_chars(version.data(), version.data() + version.size(), number);
  return std::max(number, 0);
}

}  // namespace orvane

#pragma once

#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <unistd.h>

/// What this machine is called where the user has given it no name of its own; any name where that is so.
inline testing::Matcher<std::string> deviceName() {
  if (std::filesystem::exists("/etc/machine-info")) return testing::Not("");
  char name[256] = {};
  gethostname(name, sizeof name - 1);
  return std::string(name);
}

/// An address in dotted form; none if this machine's name has none.
constexpr const char* kAddress = "([0-9]+\\.[0-9]+\\.[0-9]+\\.[0-9]+)?";

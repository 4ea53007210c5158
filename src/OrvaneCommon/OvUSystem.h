#pragma once

#include <string>
#include <string_view>

/// @file
/// What the machine and its operating system say of themselves. Any thread.

/// The operating system's version: the first number of VERSION_ID in its os-release file, 12 for Debian 12. 0 if there
/// is none, as on a distribution without releases.
int OvU_GetOSVersion();

/// The value of one of the system's parameters: what /proc/sys holds under the name with "/" for ".". Of the machine,
/// "hw.model" is the product's name and "hw.machine" the architecture.
///
/// Lines are kept, but not the last line feed. Empty if there is no such value, and for a name with anything but
/// letters, digits, "_" and "-" between single dots.
std::string OvU_GetSystemInfo(const std::string& name);

namespace orvane {

/// The operating system's name and version for people, "Debian GNU/Linux 12 (bookworm)"; without an os-release file,
/// what the kernel calls itself.
std::string operatingSystemDescription();

/// The value of `key` in the text of an os-release file, without its quotes; empty if it isn't there.
std::string osReleaseValue(std::string_view text, std::string_view key);

/// The number that `version` starts with, or 0 if it starts with none or one beyond an int.
int majorVersion(std::string_view version);

}  // namespace orvane

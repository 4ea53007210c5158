#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// Acts of the program that the desktop may ask for by name.
inline constexpr std::string_view kApplicationActions[] = {"preferences", "about", "quit"};
bool isApplicationAction(std::string_view name);

/// What the arguments of a start ask for.
struct ApplicationArguments {
  /// Links "orvane:…" and "helperorvane:…" as they were given, and launch files as absolute "file:///…" addresses, in
  /// the order of the arguments.
  std::vector<std::string> addresses{};
  /// Of "--address=TEXT": what the user may connect to first; of use to a first start alone.
  std::string addressToConnect{};
  std::string action{};       ///< one of kApplicationActions, by "--preferences" and so on; empty: none
  bool isService = false;     ///< "--service": started by the session bus, which tells by a request what for
  bool isBackground = false;  ///< "--background": started at the log-in, not by the user
  bool wantsHelp = false;     ///< "--help", "-h"
  bool wantsVersion = false;  ///< "--version"
  /// What is wrong with the arguments, as one line for the terminal; empty: nothing.
  std::string error{};
};

/// Sorts arguments, without the program's name; behind "--" none is an option.
/// @param workingFolder where relative files are, an absolute path.
ApplicationArguments sortArguments(std::span<const std::string> arguments, const std::string& workingFolder);

/// What "--help" prints.
std::string argumentsHelp();

/// Whether the address is one of those that sortArguments() gives: a link of ours or a local file.
bool isOpenableAddress(const std::string& address);

/// The path of an address "file:///…" or "file://localhost/…"; nothing for another address.
std::optional<std::string> filePathOfAddress(const std::string& address);

}  // namespace orvane

#pragma once

#include <span>
#include <string_view>
#include <variant>

#include "Files/OvSettingsData.h"

/// @file
/// The keys of a launch file: one table for its reader and its writer.

namespace orvane {

/// What the text behind a key means; unless told otherwise the reader undoes what the writer does.
enum class ValueForm {
  kPlain,         ///< a string with escapes, or a decimal number; a switch is 0 or another number
  kPassword,      ///< a string with escapes, enciphered in a block of 256 bytes
  kEnciphered,    ///< a string with escapes, enciphered in a block of 1,024 bytes
  kAddress,       ///< a string without escapes, enciphered in a block of 1,024 bytes; never written
  kUnescaped,     ///< a string that is written with escapes and read without
  kInverted,      ///< a switch that is off when the number isn't 0
  kZeroOrOne,     ///< a number that is read as a switch
  kScreenMode,    ///< a switch: 2 is on, all else off; off is written as 1
  kSpanMonitors,  ///< a switch that is on, whatever the number, if a seamless mode has been read
  kAlwaysOne,     ///< a switch that is written as 1, whatever it is
};

/// When a key's line is written.
enum class Written {
  kNever,
  kAlways,              ///< a string: unless it is unset
  kIfSet,               ///< a string that isn't empty, a number or switch that isn't 0
  kWithoutApplication,  ///< as kAlways, unless `application` is set
  kWithProxy,           ///< as kIfSet, if `use_proxy` is on
  kWithServers,         ///< as kIfSet for a string, else always, if `broker_servers` is set
};

using TextField = char* OvSettingsData::*;
using SwitchField = bool OvSettingsData::*;
using NumberField = int OvSettingsData::*;

struct LaunchFileKey {
  std::string_view name;
  std::variant<TextField, SwitchField, NumberField> field;
  Written written = Written::kNever;
  ValueForm form = ValueForm::kPlain;
};

/// All keys, in the order in which their lines are written.
std::span<const LaunchFileKey> launchFileKeys();

/// The key of this name in any letter case, or null.
const LaunchFileKey* findLaunchFileKey(std::string_view name);

}  // namespace orvane

#pragma once

#include <deque>
#include <string>

/// @file
/// The server farm configuration: an XML document that an administrator publishes, with the connections that a
/// connector is to have (docs/farm-configuration.md). All functions may be called on any thread.

namespace OvCommon {

/// One way to reach a farm: a field for each row of OvLocationSettingsFields.def.
struct OvLocationSettings {
#define OVCOMMON_ATTRIBUTE(Type, Name) Type Name{};
#include "Files/OvLocationSettingsFields.def"

  bool operator==(const OvLocationSettings&) const = default;
};

/// A connection: a field for each row of OvFarmSettingsFields.def, and its lists. Empty, 0 and false at the start, and
/// where the document says nothing. Numbers are the document's, checked for nothing.
struct OvFarmSettings {
#define OVCOMMON_ATTRIBUTE(Type, Name) Type Name{};
#define OVCOMMON_GROUP(Type, Name) struct Type {
#define OVCOMMON_GROUP_END(Type, Name)          \
  bool operator==(const Type&) const = default; \
  }                                             \
  Name;
#include "Files/OvFarmSettingsFields.def"

  std::deque<std::wstring> AutoLaunchApps;   ///< names of applications to start, in this order
  std::deque<OvLocationSettings> Locations;  ///< in ascending order of their Number

  bool operator==(const OvFarmSettings&) const = default;
};

/// Reads a configuration into `farms`, replacing what they held. In spite of the name `xmlText` is the document itself,
/// in UTF-8 or any encoding that it announces, and no path.
/// @return true for well-formed XML, even if it says nothing of farms. False, with `farms` as they were, if it is not
///         well-formed, has no element, or has more than 100,000 farms and locations, and if memory is short.
bool ParseConfigurationFile(const std::string& xmlText, std::deque<OvFarmSettings>& farms);

/// Splits `text` at each `separator` into `out`, replacing what it held. Items are not trimmed and may be empty, also
/// the one behind a separator at the end; an empty text has no item. An empty separator splits nothing.
void SplitString(const std::wstring& text, const std::wstring& separator, std::deque<std::wstring>& out);

/// The order of a farm's locations: by Number, the smallest first.
bool CompareLocations(const OvLocationSettings& left, const OvLocationSettings& right);

}  // namespace OvCommon

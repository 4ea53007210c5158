#pragma once

#include <type_traits>

#include "Files/ServerFarmConfiguration.h"

namespace orvane {

/// Calls `visit(name, field)` for every attribute of a farm (those of its groups too, but not its lists) or of a
/// location, in the record's order.
template <typename Farm, typename Visitor>
requires std::is_same_v<std::remove_const_t<Farm>, OvCommon::OvFarmSettings>
void forEachAttribute(Farm& farm, Visitor visit) {
  {
    auto& record = farm;
#define OVCOMMON_ATTRIBUTE(Type, Name) visit(#Name, record.Name);
#define OVCOMMON_GROUP(Type, Name) \
  }                                \
  {                                \
    auto& record = farm.Name;
#define OVCOMMON_GROUP_END(Type, Name) \
  }                                    \
  {                                    \
    [[maybe_unused]] auto& record = farm;  // where one group follows another
#include "Files/OvFarmSettingsFields.def"
  }
}

template <typename Location, typename Visitor>
requires std::is_same_v<std::remove_const_t<Location>, OvCommon::OvLocationSettings>
void forEachAttribute(Location& location, Visitor visit) {
#define OVCOMMON_ATTRIBUTE(Type, Name) visit(#Name, location.Name);
#include "Files/OvLocationSettingsFields.def"
}

}  // namespace orvane

#pragma once

#include <optional>
#include <string>

#include "Files/OvSettings.h"
#include "OrvaneCommon/OvError.h"

namespace orvane {

/// Loads a launch file that somebody else made, or the one in its place that it names the address of.
///
/// An address that the load itself can't follow, such as one that redirects, is fetched over the file as one step, once
/// it has turned out to be a launch file: else the file stays as it was, for another try. Blocks on the network. Any
/// thread.
/// @return why the file can't be had, error 9, with a line in the log; nothing if `settings` has it.
std::optional<OvError> loadOutsideLaunchFile(const std::string& path, OvSettings& settings);

}  // namespace orvane

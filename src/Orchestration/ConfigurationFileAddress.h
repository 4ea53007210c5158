#pragma once

#include <string>

/// @file
/// Where the configuration file of an address lies, for an address as a user types it. Nothing here touches the
/// network. Any thread.

namespace orvane {

/// Whether the address is that of a configuration file itself: it ends in ".xml", in small letters.
bool isConfigurationFileAddress(const std::string& address);

/// The address of the configuration file: the address itself if it is one, else config.xml below it.
///
/// For that the path is brought into its shortest form: without empty segments, "." and "..", which never lead above
/// the host. Query, fragment and any ":" and "/" at the end fall away. Scheme and host are kept as they are.
std::string configurationFileAddress(const std::string& address);

/// The path of the file of this machine that the address of a configuration file may mean; empty if it means none.
///
/// A URL of the scheme "file" without a host means its path, decoded; one of any other scheme no file; an address
/// without a scheme is a path as it stands, relative to the working folder or, behind "~/", to the user's home folder.
std::string localConfigurationPath(const std::string& address);

}  // namespace orvane

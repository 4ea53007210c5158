#pragma once

#include <string>

/// @file
/// Paths of the program's own files, and of programs that it looks for. Any thread. None reports a failure: a folder
/// that can't be made shows up as a file that can't be opened.

/// The folder of the preferences, Orvane's in the user's configuration home; made if missing.
std::string OvU_GetOrvaneDirPath();

/// The file of the preferences there. If there is none, an empty property list is written first: a valid XML document
/// that has none of the elements.
std::string OvU_GetOrvaneSettingsPath();

/// The folder for launch files and other files that are gone soon, readable by nobody else; made if missing. Empty if
/// no such folder can be had: the caller must then write nothing (orvane::temporaryFolder).
std::string OvU_GetTempDirPath();

/// The executable of the session program, whether it exists or not.
///
/// It lies inside the connector's bundle in an installed product, "Orvane.app/Contents/Applications/Orvane
/// Connection.app/Contents/MacOS/Orvane Connection", and beside the bundle when that has another name. Empty for an
/// empty path. The form without a path takes the bundle of the program that runs.
std::string OvU_GetOrvaneConnectionPath();
std::string OvU_GetOrvaneConnectionPath(const std::string& bundlePath);

/// The browser plug-in that plays Flash content: libflashplayer.so among the browser's plug-ins of the whole system,
/// else among those of the user (~/.mozilla/plugins). Empty if it is in neither place.
std::string OvU_GetFlashPlayerPath(const std::string& systemPlugIns = "/usr/lib/mozilla/plugins");
bool OvU_IsFlashPlayerInstalled();

/// Makes a new folder "clipboard.XXXXXX" in `folder`, with random characters for the X's. @return its path, or an empty
/// text if that fails.
std::string OvU_CreateUniqueSubDir(const std::string& folder);

namespace orvane {

/// The bundle that an executable belongs to: "X.app" for ".../X.app/Contents/MacOS/name", else the executable itself.
std::string bundleOfProgram(const std::string& executable);

}  // namespace orvane

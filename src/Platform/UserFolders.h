#pragma once

#include <string>

/// @file
/// Where the user's files lie: the base directories of the XDG standard, from the environment at each call. An unset,
/// empty or relative value counts as the standard's default. All functions may be called on any thread; none throws or
/// reports a failure: a folder that can't be made shows up as a file that can't be opened.

namespace orvane {

/// The user's home folder: HOME if that is an absolute path, else what the user database says, else "/".
std::string homeFolder();

/// Orvane's own folder below one of the base directories, for preferences, for data that can't be fetched again, and
/// for the log. It is made if missing, mode 0700, and so is the base directory with its parents. For data it is `name`,
/// which may be a path.
std::string configurationFolder();
std::string dataFolder(const std::string& name);
std::string stateFolder();

/// The folder of what the desktop starts when the user logs in. It belongs to all programs, and isn't made here.
std::string autostartFolder();

/// Orvane's folder for files that another program of the same user picks up at once: in the folder that the session has
/// for such (XDG_RUNTIME_DIR, if it is the user's alone), else `lastResort`.
///
/// Nobody else can read or change what is in it: see privateFolder. Empty if neither can be had; a file must then not
/// be written anywhere.
std::string temporaryFolder(const std::string& lastResort = "/tmp/Orvane");

/// `path` as a folder of mode 0700 that belongs to the user, made if missing; its parent must exist.
///
/// For places where others may write: empty if something else is there, a symbolic link and another user's folder
/// included.
std::string privateFolder(const std::string& path);

}  // namespace orvane

#pragma once

#include <optional>
#include <string>

namespace orvane {

/// Opens things with the programs that the user's desktop has chosen for them. All operations may be called on any
/// thread but the main one, as they ask the file system. None waits for a program, and none throws: why something
/// can't be done stands in the log.
class Opener {
 public:
  virtual ~Opener() = default;

  /// Opens a web address, or a file by its "file://" address, with the default program for it. Refuses an address that
  /// begins with "-", which the desktop could take for an option.
  /// @return whether the desktop was asked; what it makes of it is not told.
  virtual bool openAddress(const std::string& address) = 0;

  /// Asks the desktop to mount the share of an address "smb://server/share/folder", in which all but unreserved
  /// characters and "/" is percent-escaped. It may ask the user who they are, for as long as they like.
  /// @return whether the desktop was asked.
  virtual bool mountShare(const std::string& address) = 0;

  /// Where in the file system the folder "server/share/folder" of the network appears now. Nothing if the desktop has
  /// not mounted the share, or doesn't say where, or there is no share in the text.
  virtual std::optional<std::string> mountedPath(const std::string& networkFolder) = 0;
};

}  // namespace orvane

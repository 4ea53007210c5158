#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Platform/Opener.h"
#include "Platform/Queues.h"
#include "Platform/Timer.h"

/// Opens what a broker publishes as content, a document or a web address, on this computer instead of in a session.
///
/// A broker's text becomes one argument of the desktop's opener and never part of a command. What may be opened is
/// whatever the desktop can open: a file or folder that exists, a file of a share in the network, and an address of any
/// scheme. A text with a control character isn't opened.
///
/// All operations may be called on any thread but the main one, as they ask the file system and may wait for a server.
class ContentOpener {
 public:
  /// A file in the network: of `"\\server\share\folder\file.ext"`, the folder "server/share/folder", whose mount is
  /// named "folder", and the file "file.ext". Without a share, as in `"\\server\file.ext"`, the server is the folder
  /// and names the mount.
  struct NetworkPath {
    std::string mountPath{};
    std::string mountName{};
    std::string fileName{};
  };

  ContentOpener(std::shared_ptr<orvane::Opener> opener, std::shared_ptr<orvane::GlobalQueue> queue,
                std::shared_ptr<orvane::Timer> timer);

  /// Opens the program path of a launch record.
  ///
  /// A text with two backslashes in a row is a file in the network. If it isn't there, its share is mounted, and it is
  /// opened once it is there, or else after 180 looks at intervals of a second; the call doesn't wait for that. It
  /// appears where the desktop says, else below "/Volumes", in a folder named after its mount. Any other text, less one
  /// double quote at each end, is a file if there is one of that name, a relative one in the program's working folder;
  /// otherwise it is an address, with "http://" in front if there is no "://" in it.
  ///
  /// @return false if the text is an absolute path without a file, or none of the above. Whether what is opened really
  ///         opens is not told.
  bool MCOpenAppContent(const std::string& programPath);

  /// Whether two backslashes in a row are in the text.
  static bool isNetworkPath(const std::string& programPath);

  /// The parts of a network path, which stands in double quotes and begins with two backslashes. Nothing if it
  /// doesn't, if it is too long for a path, or if a part between separators is empty, "." or "..".
  static std::optional<NetworkPath> getPathForMountAndFilename(const std::string& programPath);

 private:
  bool openNetworkFile(const std::string& programPath);

  const std::shared_ptr<orvane::Opener> opener_;
  const std::shared_ptr<orvane::GlobalQueue> queue_;
  const std::shared_ptr<orvane::Timer> timer_;
};

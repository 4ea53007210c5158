#pragma once

#include <memory>

#include "Platform/Linux/PosixProcessStarter.h"
#include "Platform/Opener.h"

namespace orvane {

/// Opens by the programs `xdg-open` and `gio`, which are looked for in the PATH.
///
/// A share is mounted by `gio mount`, which takes the user's name and password from the desktop's key ring and can't
/// ask for them, as it has no terminal. Where it fails, `xdg-open` hands the address to the file manager, which asks.
/// Mounted shares appear where the desktop's virtual file system shows them to all programs: in the folder "gvfs" of
/// the session's own folder (XDG_RUNTIME_DIR), each under the name "smb-share:server=SERVER,share=SHARE", maybe with
/// more such fields. Letter case doesn't count, and of several mounts of a share any may be chosen.
class DesktopOpener final : public Opener {
 public:
  /// Reads the environment.
  explicit DesktopOpener(std::shared_ptr<PosixProcessStarter> starter);

  bool openAddress(const std::string& address) override;
  bool mountShare(const std::string& address) override;
  std::optional<std::string> mountedPath(const std::string& networkFolder) override;

 private:
  const std::shared_ptr<PosixProcessStarter> starter_;
  const std::string mountsFolder_;  // empty if the desktop names none
};

}  // namespace orvane

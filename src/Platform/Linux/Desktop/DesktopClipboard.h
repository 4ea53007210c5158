#pragma once

#include "Platform/Clipboard.h"

namespace orvane {

/// The toolkit's clipboard, of a QGuiApplication.
class DesktopClipboard final : public Clipboard {
 public:
  std::optional<std::string> bytes(const std::string& mimeType) const override;
};

}  // namespace orvane

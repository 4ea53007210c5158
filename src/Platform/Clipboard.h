#pragma once

#include <optional>
#include <string>

namespace orvane {

/// The desktop's clipboard, as far as it is read here. Main thread only.
class Clipboard {
 public:
  virtual ~Clipboard() = default;
  /// The bytes that the clipboard holds under a MIME type; nothing if it doesn't hold that type.
  virtual std::optional<std::string> bytes(const std::string& mimeType) const = 0;
};

}  // namespace orvane

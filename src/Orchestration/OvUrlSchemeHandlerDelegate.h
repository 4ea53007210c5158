#pragma once

#include <string>

/// Whoever starts the auto-configuration that a link asks for.
class OvUrlSchemeHandlerDelegate {
 public:
  virtual ~OvUrlSchemeHandlerDelegate() = default;

  /// A link of the command "autodetect" came. Called on the thread that reads the link: an implementation moves to the
  /// main thread itself. Both texts are as the link carries them, unchecked.
  virtual void urlSchemeHandlerDidReceiveAutodetectURL(const std::string& url, const std::string& farmGUID) = 0;
};

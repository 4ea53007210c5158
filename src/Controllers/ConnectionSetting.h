#pragma once

#include <cstddef>
#include <string>

/// The boxes of the connection editor.
enum class ConnectionSetting {
  kConnectOnStart,
  kMultipleMonitors,
  kPlayAudio,
  kRedirectClipboard,
  kRedirectDrives,
  kSeamless,
  kPrinters,
  kSerialPorts,
  kDesktopBackground,
  kFontSmoothing,
  kDesktopComposition,
  kWindowContent,
  kAnimation,
  kThemes,
  kBitmapCaching,
  kGraphicsAcceleration,
  kSurge,
  kFlashRedirection,
  kAnonymousLogin,
  kSaveCredentials
};
constexpr size_t kConnectionSettings = static_cast<size_t>(ConnectionSetting::kSaveCredentials) + 1;

/// Its pop-up buttons.
enum class ConnectionPopUp { kResolution, kColors, kSpeed };
constexpr size_t kConnectionPopUps = static_cast<size_t>(ConnectionPopUp::kSpeed) + 1;

struct ConnectionPopUpItem {
  std::string title;
  bool isHidden = false;  ///< stands in the list, and can't be chosen
};

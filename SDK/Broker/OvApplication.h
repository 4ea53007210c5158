#pragma once

#include <string>
#include <utility>

#include "Broker/IconText.h"
#include "Support/Property.h"

#define ORVANE_ICON_PROPERTY(Name, name)                                    \
 public:                                                                    \
  std::string get##Name() const { return name##_.text(); }                  \
  void set##Name(std::string icon) { name##_ = IconText(std::move(icon)); } \
  void set##Name(IconText icon) { name##_ = std::move(icon); }              \
                                                                            \
 private:                                                                   \
  IconText name##_;

/// An application or desktop that is published to the logged-in user, as the broker lists it. Texts are UTF-8.
class OvApplication {
  ORVANE_STRING_PROPERTY(Name, name)          ///< the key that OvBrokerClient::launchApplication takes
  ORVANE_STRING_PROPERTY(Shortcut, shortcut)  ///< the name shown
  ORVANE_STRING_PROPERTY(Path, path)
  ORVANE_STRING_PROPERTY(Arguments, arguments)
  ORVANE_STRING_PROPERTY(WorkingDir, workingDir)
  ORVANE_STRING_PROPERTY(FolderName, folderName)  ///< the position in the folder tree
  ORVANE_ICON_PROPERTY(LargeIcon, largeIcon)      ///< an icon string as ico2png_* takes it, unchecked
  ORVANE_ICON_PROPERTY(SmallIcon, smallIcon)
  ORVANE_VALUE_PROPERTY(int, ShowCmd, showCmd, 0)  ///< the broker's; carried and not interpreted
  ORVANE_VALUE_PROPERTY(int, AppType, appType, 1)  ///< 2 is a desktop
  ORVANE_VALUE_PROPERTY(int, DesktopShortcutLocation, desktopShortcutLocation, 0)  ///< carried and not interpreted
};

#undef ORVANE_ICON_PROPERTY

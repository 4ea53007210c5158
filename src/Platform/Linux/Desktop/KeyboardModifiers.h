#pragma once

#include "Platform/ModifierKeys.h"

namespace orvane {

/// The keys as the desktop has them, whichever window has the focus; where it doesn't tell, as of the last event that
/// this program got. With a QGuiApplication.
class KeyboardModifiers final : public ModifierKeys {
 public:
  uint32_t held() const override;
};

}  // namespace orvane

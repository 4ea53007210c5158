#pragma once

#include <cstdint>

namespace orvane {

/// The keyboard's modifier keys at this moment. Main thread only.
class ModifierKeys {
 public:
  static constexpr uint32_t kShift = 0x20000;
  static constexpr uint32_t kControl = 0x40000;

  virtual ~ModifierKeys() = default;
  /// Of the keys above those that are held.
  virtual uint32_t held() const = 0;
};

}  // namespace orvane

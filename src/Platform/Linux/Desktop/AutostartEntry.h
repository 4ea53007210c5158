#pragma once

#include <string>

#include "Platform/Autostart.h"

namespace orvane {

/// The program's entry among those that the desktop starts at the log-in: autostart/example.orvane.Connector.desktop in
/// the user's configuration folder. An entry that the desktop's own settings have switched off counts as none.
class AutostartEntry final : public Autostart {
 public:
  /// @param program an absolute path.
  explicit AutostartEntry(std::string program);

  bool isEnabled() const override;
  bool setEnabled(bool isEnabled) override;

 private:
  const std::string program_;
};

}  // namespace orvane

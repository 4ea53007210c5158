#pragma once

#include <QWidget>
#include <vector>

#include "Controllers/SettingsWindowController.h"

class QCheckBox;
class QComboBox;
class QLabel;

namespace orvane {

/// The preferences of the whole program. The controller outlives it.
class SettingsView : public QWidget {
 public:
  explicit SettingsView(SettingsWindowController& controller);

 private:
  void refresh();
  QWidget* makeGroups();

  SettingsWindowController& controller_;
  std::vector<std::pair<SettingsWindowController::Box, QCheckBox*>> boxes_{};
  QComboBox* const onResolutionChange_;
  QLabel* const closing_;
};

}  // namespace orvane

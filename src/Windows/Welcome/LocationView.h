#pragma once

#include <QWidget>
#include <string>
#include <vector>

class ChooseLocationViewController;
class QButtonGroup;
class QLabel;
class QPushButton;
class QVBoxLayout;

namespace orvane {

/// Asks where a farm is used, with a radio button for each location: a page of the welcome flow, and a window of its
/// own. The controller outlives it.
class LocationView : public QWidget {
 public:
  explicit LocationView(ChooseLocationViewController& controller);

 private:
  void refresh();
  void listLocations();

  ChooseLocationViewController& controller_;
  std::vector<std::string> shownNames_{};
  QLabel* const success_;
  QLabel* const title_;
  QWidget* const list_;
  QVBoxLayout* const rows_;
  QButtonGroup* const group_;
  QPushButton* const cancel_;
  QPushButton* const connect_;
};

}  // namespace orvane

#pragma once

#include <QWidget>

class AboutWindowController;
class QStackedLayout;

namespace orvane {

/// What the program is, and its legal page. The controller outlives it.
class AboutView : public QWidget {
 public:
  explicit AboutView(AboutWindowController& controller);

 private:
  void refresh();
  QWidget* makeAboutPage();
  QWidget* makeLegalPage();

  AboutWindowController& controller_;
  QStackedLayout* const pages_;
};

}  // namespace orvane

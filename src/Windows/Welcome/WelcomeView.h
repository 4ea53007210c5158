#pragma once

#include <QWidget>
#include <map>

#include "Controllers/WelcomeScreenViewController.h"

class QStackedLayout;

namespace orvane {

/// The welcome flow: the page that its controller says, in the middle. The controller outlives it.
class WelcomeView : public QWidget {
 public:
  explicit WelcomeView(WelcomeScreenViewController& controller);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void refresh();

  WelcomeScreenViewController& controller_;
  QStackedLayout* const stack_;
  std::map<WelcomeStageView, QWidget*> pages_{};
};

}  // namespace orvane

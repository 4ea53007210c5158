#include "Windows/MainWindow/SidePanelView.h"

#include <QKeyEvent>
#include <QStackedLayout>
#include <algorithm>

#include "Controllers/MainWindowController.h"
#include "Windows/ConnectionEditor/ConnectionSettingsView.h"
#include "Windows/MainWindow/ConnectionsListView.h"
#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Text.h"

namespace orvane {

SidePanelView::SidePanelView(MainWindowController& controller, QWidget* window)
    : QFrame(window),
      controller_(controller),
      stack_(new QStackedLayout(this)),
      list_(new ConnectionsListView(controller.connectionsList())),
      slide_(this, "pos") {
  setObjectName(QStringLiteral("sidePanel"));
  setAccessibleName(text("DiMode.Menu.Connections"));
  setProperty("role", "panel");
  stack_->addWidget(list_);
  slide_.setDuration(metrics::kSlideMilliseconds);
  slide_.setEasingCurve(QEasingCurve::OutCubic);
  connect(&slide_, &QPropertyAnimation::finished, this, [this] { setVisible(isOpen_); });
  hide();
}

QWidget* SidePanelView::editor() {
  if (editor_ == nullptr) {
    editor_ = new ConnectionSettingsView(controller_.connectionSettings());
    stack_->addWidget(editor_);
  }
  return editor_;
}

void SidePanelView::refresh(QWidget* welcome) {
  if (welcome != nullptr && stack_->indexOf(welcome) < 0) stack_->addWidget(welcome);
  QWidget* page = controller_.isConnectionSettingsViewShown() ? editor() : welcome != nullptr ? welcome : list_;
  const bool isOther = stack_->currentWidget() != page;
  if (isOther) stack_->setCurrentWidget(page);
  const bool opens = controller_.isSidePanelOpen() && !isOpen_;
  if (controller_.isSidePanelOpen() != isOpen_) slide(controller_.isSidePanelOpen());
  if (isOpen_ && (opens || isOther)) {
    page->setFocus(Qt::OtherFocusReason);
    if (!isAncestorOf(window()->focusWidget())) focusNextChild();
  }
}

void SidePanelView::slide(bool isOpen) {
  isOpen_ = isOpen;
  slide_.stop();
  const QPoint open(0, y());
  const QPoint shut(-width(), y());
  if (!controller_.isSidePanelAnimated()) {
    move(isOpen ? open : shut);
    setVisible(isOpen);
    return;
  }
  if (isOpen && !isVisible()) move(shut);
  show();
  raise();
  slide_.setStartValue(pos());
  slide_.setEndValue(isOpen ? open : shut);
  slide_.start();
}

void SidePanelView::place(int top) {
  const QSize window = parentWidget()->size();
  const int width = std::min(metrics::kSidePanelWidth, window.width() - metrics::kRowHeight);
  slide_.stop();
  setGeometry(isOpen_ ? 0 : -width, top, width, window.height() - top);
  setVisible(isOpen_);
}

void SidePanelView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && stack_->currentWidget() == list_) {
    controller_.handleSidePanelMainDisablingAreaClick();
    return;
  }
  pressDialogKey(*stack_->currentWidget(), *event);
}

}  // namespace orvane

#include "Windows/Welcome/WelcomeView.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollArea>
#include <QStackedLayout>
#include <QVBoxLayout>

#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Picture.h"
#include "Windows/Style/Theme.h"
#include "Windows/Welcome/ConnectOnStartView.h"
#include "Windows/Welcome/CredentialsView.h"
#include "Windows/Welcome/InputUrlView.h"
#include "Windows/Welcome/LocationView.h"
#include "Windows/Welcome/ProgressView.h"

namespace orvane {

WelcomeView::WelcomeView(WelcomeScreenViewController& controller)
    : controller_(controller), stack_(new QStackedLayout) {
  pages_ = {{WelcomeStageView::kNone, new QWidget},
            {WelcomeStageView::kAddress, new InputUrlView(controller.inputUrl())},
            {WelcomeStageView::kProgress, new ProgressView(controller.progress())},
            {WelcomeStageView::kCredentials, new CredentialsView(controller.inputCredentials())},
            {WelcomeStageView::kLocation, new LocationView(controller.chooseLocation())},
            {WelcomeStageView::kConfirmation, new ConnectOnStartView(controller.connectOnStartConfirmation())}};
  for (const auto& [stage, page] : pages_) stack_->addWidget(page);

  auto* column = new QWidget;
  column->setObjectName(QStringLiteral("welcomeColumn"));
  column->setMaximumWidth(metrics::kPageWidth);
  auto* columnLayout = new QVBoxLayout(column);
  columnLayout->setContentsMargins(0, 0, 0, 0);
  columnLayout->setSpacing(metrics::kDialogMargin);
  columnLayout->addStretch(1);
  columnLayout->addWidget(new Picture(QStringLiteral(":/pictures/welcome.svg"), QSize(240, 144)), 0, Qt::AlignHCenter);
  columnLayout->addLayout(stack_);
  columnLayout->addStretch(2);

  auto* content = new QWidget;
  auto* row = new QHBoxLayout(content);
  row->setContentsMargins(metrics::kDialogMargin, metrics::kDialogMargin, metrics::kDialogMargin,
                          metrics::kDialogMargin);
  row->addStretch(1);
  row->addWidget(column, 1000);
  row->addStretch(1);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(scrolling("welcomePages", content));

  controller_.setOnChange([this] { refresh(); });
  refresh();
}

void WelcomeView::keyPressEvent(QKeyEvent* event) {
  pressDialogKey(*pages_.at(controller_.currentStageView()), *event);
}

void WelcomeView::paintEvent(QPaintEvent*) { QPainter(this).fillRect(rect(), colors().window); }

void WelcomeView::refresh() {
  QWidget* page = pages_.at(controller_.currentStageView());
  setFocusProxy(page);
  if (stack_->currentWidget() == page) return;
  stack_->setCurrentWidget(page);
  if (isVisible()) page->setFocus(Qt::OtherFocusReason);
}

}  // namespace orvane

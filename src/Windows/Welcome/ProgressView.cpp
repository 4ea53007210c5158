#include "Windows/Welcome/ProgressView.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "Controllers/ProgressAnimationViewController.h"
#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Spinner.h"
#include "Windows/Style/Text.h"

namespace orvane {

ProgressView::ProgressView(ProgressAnimationViewController& controller)
    : controller_(controller),
      description_(makeLabel("progressDescription", "secondary")),
      spinner_(new Spinner),
      cancel_(makeButton("cancelButton", nullptr, text("UI.Buttons.Cancel"))) {
  setWindowTitle(text("View.Progress.Title"));
  spinner_->setAccessibleName(text("View.Progress.Title"));
  QLabel* title = makeLabel("progressTitle", "title", text("View.Progress.Title"));
  title->setAlignment(Qt::AlignHCenter);
  description_->setAlignment(Qt::AlignHCenter);
  // Room for what is told later, so that nothing jumps.
  description_->setMinimumHeight(description_->fontMetrics().lineSpacing() * 2);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(metrics::kSpacing);
  layout->addWidget(spinner_, 0, Qt::AlignHCenter);
  layout->addSpacing(metrics::kSpacing);
  layout->addWidget(title);
  layout->addWidget(description_);
  layout->addSpacing(metrics::kSpacing);
  layout->addWidget(cancel_, 0, Qt::AlignHCenter);
  layout->addStretch();
  clickOnEscape(*this, *cancel_);

  connect(cancel_, &QPushButton::clicked, this, [this] { controller_.onCancelClick(); });
  controller_.setOnChange([this] { refresh(); });
  setFocusProxy(cancel_);
  refresh();
}

void ProgressView::refresh() { display(*description_, toQString(controller_.description())); }

}  // namespace orvane

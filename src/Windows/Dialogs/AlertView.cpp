#include "Windows/Dialogs/AlertView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "Controllers/AlertViewController.h"
#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Text.h"

namespace orvane {

AlertView::AlertView(AlertViewController& controller)
    : controller_(controller),
      title_(makeLabel("alertTitle", "title")),
      text_(makeLabel("alertText", nullptr)),
      buttons_(new QWidget),
      row_(new QHBoxLayout(buttons_)) {
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  row_->setContentsMargins(0, 0, 0, 0);
  row_->setSpacing(metrics::kSpacing);
  row_->addStretch();

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(metrics::kSpacing);
  layout->addWidget(title_);
  layout->addWidget(text_);
  layout->addSpacing(metrics::kMargin);
  layout->addWidget(buttons_);

  controller_.setOnChange([this] { refresh(); });
  refresh();
}

void AlertView::refresh() {
  if (shownTitles_ != controller_.buttonTitles()) makeButtons();
  setWindowTitle(toQString(controller_.title()));
  display(*title_, toQString(controller_.title()));
  title_->setVisible(!controller_.isTitleHidden());
  display(*text_, toQString(controller_.text()));
}

void AlertView::makeButtons() {
  shownTitles_ = controller_.buttonTitles();
  // One of them may be what is being clicked.
  for (QPushButton* button : buttons_->findChildren<QPushButton*>()) {
    button->hide();
    button->setParent(nullptr);
    button->deleteLater();
  }
  QPushButton* last = nullptr;
  for (size_t index = 0; index < shownTitles_.size(); ++index) {
    last = makeButton(qPrintable(QStringLiteral("alertButton%1").arg(index)), index == 0 ? "primary" : nullptr,
                      toQString(shownTitles_[index]));
    last->setDefault(index == 0);
    row_->addWidget(last);
    if (index == 0) setFocusProxy(last);
    connect(last, &QPushButton::clicked, this, [this, index] { controller_.onButtonClick(static_cast<int>(index)); });
  }
  if (last != nullptr) clickOnEscape(*this, *last);
}

}  // namespace orvane

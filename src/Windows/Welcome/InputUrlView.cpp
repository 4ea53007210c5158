#include "Windows/Welcome/InputUrlView.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "Controllers/InputUrlViewController.h"
#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Text.h"

namespace orvane {

InputUrlView::InputUrlView(InputUrlViewController& controller)
    : controller_(controller),
      title_(makeLabel("welcomeTitle", "title", text("View.InputUrl.Title"))),
      explanation_(makeLabel("welcomeExplanation", "secondary", text("View.InputUrl.Explanation"))),
      address_(makeField("addressField", text("View.InputUrl.Address"))),
      error_(makeLabel("addressError", "error")),
      cancel_(makeButton("skipButton", nullptr)),
      next_(makeButton("nextButton", "primary")) {
  QLabel* label = makeLabel("addressLabel", "heading", text("View.InputUrl.Address"));
  label->setBuddy(address_);
  address_->setPlaceholderText(QStringLiteral("name@company.example"));
  address_->setInputMethodHints(Qt::ImhUrlCharactersOnly | Qt::ImhNoAutoUppercase);
  next_->setDefault(true);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(metrics::kSpacing);
  layout->addWidget(title_);
  layout->addWidget(explanation_);
  layout->addSpacing(metrics::kMargin);
  layout->addWidget(label);
  layout->addWidget(address_);
  layout->addWidget(error_);
  layout->addSpacing(metrics::kMargin);
  layout->addLayout(buttonRow({}, {cancel_, next_}));
  layout->addStretch();
  clickOnEscape(*this, *cancel_);

  connect(address_, &QLineEdit::textEdited, this,
          [this](const QString& typed) { controller_.setUrlToConnect(typed.toStdString()); });
  connect(next_, &QPushButton::clicked, this, [this] { controller_.onNextClick(); });
  connect(cancel_, &QPushButton::clicked, this, [this] { controller_.onCancelClick(); });
  controller_.setOnChange([this] { refresh(); });
  controller_.setOnFocus([this](InputUrlFocus) {
    if (isHidden()) return;  // another page shows, and has the focus
    address_->setFocus(Qt::OtherFocusReason);
    address_->selectAll();
  });
  setFocusProxy(address_);
  refresh();
}

void InputUrlView::refresh() {
  display(*address_, toQString(controller_.urlToConnect()));
  showError(*error_, controller_.errorText());
  next_->setEnabled(controller_.isNextEnabled());
  next_->setText(toQString(controller_.nextTitle()));
  cancel_->setText(toQString(controller_.cancelTitle()));
}

}  // namespace orvane

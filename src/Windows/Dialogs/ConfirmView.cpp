#include "Windows/Dialogs/ConfirmView.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "Controllers/ConfirmWindowController.h"
#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Text.h"

namespace orvane {

ConfirmView::ConfirmView(ConfirmWindowController& controller)
    : controller_(controller),
      text_(makeLabel("confirmText", "heading")),
      askAgain_(makeCheckBox("askAgainBox", text("View.Confirm.AskAgain"))) {
  setWindowTitle(text("ProductName.Orvane"));
  QPushButton* cancel = makeButton("cancelButton", nullptr, text("UI.Buttons.Cancel"));
  QPushButton* ok = makeButton("okButton", "primary", text("UI.Buttons.OK"));
  ok->setDefault(true);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(metrics::kMargin);
  layout->addWidget(text_);
  layout->addWidget(askAgain_);
  layout->addLayout(buttonRow({}, {cancel, ok}));
  clickOnEscape(*this, *cancel);

  connect(askAgain_, &QCheckBox::toggled, this, [this](bool isChecked) { controller_.setShowAgainChecked(isChecked); });
  connect(ok, &QPushButton::clicked, this, [this] { controller_.onOkClick(); });
  connect(cancel, &QPushButton::clicked, this, [this] { controller_.onCancelClick(); });
  controller_.setOnChange([this] { refresh(); });
  setFocusProxy(ok);
  refresh();
}

void ConfirmView::refresh() {
  display(*text_, toQString(controller_.text()));
  display(*askAgain_, controller_.isShowAgainChecked());
}

}  // namespace orvane

#include "Windows/UpdateWindow/UpdateView.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "Controllers/ProductUpdateWindowController.h"
#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Text.h"

namespace orvane {

UpdateView::UpdateView(ProductUpdateWindowController& controller)
    : controller_(controller),
      message_(makeLabel("updateMessage", nullptr)),
      cancel_(makeButton("cancelButton", nullptr)) {
  setWindowTitle(text("View.Update.Title"));
  QPushButton* install = makeButton("installButton", "primary", text("View.Update.Install"));
  install->setDefault(true);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(metrics::kSpacing);
  layout->addWidget(makeLabel("updateTitle", "title", text("View.Update.Title")));
  layout->addWidget(message_);
  layout->addSpacing(metrics::kMargin);
  layout->addLayout(buttonRow({}, {cancel_, install}));
  clickOnEscape(*this, *cancel_);

  connect(install, &QPushButton::clicked, this, [this] { controller_.onInstallClick(); });
  connect(cancel_, &QPushButton::clicked, this, [this] { controller_.onCancelClick(); });
  controller_.setOnChange([this] { refresh(); });
  setFocusProxy(install);
  refresh();
}

void UpdateView::refresh() {
  display(*message_, toQString(controller_.title()));
  cancel_->setText(toQString(controller_.cancelButtonTitle()));
}

}  // namespace orvane

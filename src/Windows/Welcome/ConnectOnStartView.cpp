#include "Windows/Welcome/ConnectOnStartView.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "Controllers/ConnectOnStartConfirmationViewController.h"
#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Text.h"

namespace orvane {

ConnectOnStartView::ConnectOnStartView(ConnectOnStartConfirmationViewController& controller)
    : controller_(controller),
      question_(makeLabel("connectOnStartQuestion", nullptr)),
      box_(makeCheckBox("connectOnStartBox", text("View.ConnectOnStart.Box"))) {
  QPushButton* done = makeButton("doneButton", "primary", text("UI.Buttons.Done"));
  done->setDefault(true);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(metrics::kSpacing);
  layout->addWidget(makeLabel("connectOnStartTitle", "title", text("View.ConnectOnStart.Title")));
  layout->addWidget(question_);
  layout->addSpacing(metrics::kSpacing);
  layout->addWidget(box_);
  layout->addSpacing(metrics::kMargin);
  layout->addLayout(buttonRow({}, {done}));
  layout->addStretch();

  connect(box_, &QCheckBox::toggled, this, [this](bool isChecked) { controller_.setAutolaunched(isChecked); });
  connect(done, &QPushButton::clicked, this, [this] { controller_.onDoneClick(); });
  controller_.setOnChange([this] { refresh(); });
  setFocusProxy(done);
  refresh();
}

void ConnectOnStartView::refresh() {
  display(*question_, toQString(controller_.confirmationText()));
  display(*box_, controller_.isAutolaunched());
}

}  // namespace orvane

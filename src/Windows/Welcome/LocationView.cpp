#include "Windows/Welcome/LocationView.h"

#include <QButtonGroup>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "Controllers/ChooseLocationViewController.h"
#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Text.h"

namespace orvane {

LocationView::LocationView(ChooseLocationViewController& controller)
    : controller_(controller),
      success_(makeLabel("locationSuccess", "secondary", text("View.Location.Found"))),
      title_(makeLabel("locationTitle", "title", text("View.Location.Title"))),
      list_(new QWidget),
      rows_(new QVBoxLayout(list_)),
      group_(new QButtonGroup(this)),
      cancel_(makeButton("skipButton", nullptr)),
      connect_(makeButton("connectButton", "primary", text("View.Location.Connect"))) {
  setWindowTitle(text("View.Location.Title"));
  connect_->setDefault(true);
  rows_->setContentsMargins(metrics::kSpacing, metrics::kSpacing, metrics::kSpacing, metrics::kSpacing);
  rows_->setAlignment(Qt::AlignTop);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(metrics::kSpacing);
  layout->addWidget(success_);
  layout->addWidget(title_);
  layout->addWidget(makeLabel("locationExplanation", "secondary", text("View.Location.Explanation")));
  layout->addWidget(scrolling("locationList", list_), 1);
  layout->addSpacing(metrics::kSpacing);
  layout->addLayout(buttonRow({}, {cancel_, connect_}));
  clickOnEscape(*this, *cancel_);

  connect(group_, &QButtonGroup::idClicked, this,
          [this](int row) { controller_.selectLocation(static_cast<size_t>(row)); });
  connect(connect_, &QPushButton::clicked, this, [this] { controller_.onConnectClick(); });
  connect(cancel_, &QPushButton::clicked, this, [this] { controller_.onCancelClick(); });
  controller_.setOnChange([this] { refresh(); });
  refresh();
}

void LocationView::refresh() {
  if (shownNames_ != controller_.locationNames()) listLocations();
  const std::optional<size_t>& selected = controller_.selectedLocation();
  // An exclusive group always keeps one, so it has to let go of it to show none.
  group_->setExclusive(selected.has_value());
  for (QAbstractButton* row : group_->buttons())
    row->setChecked(selected && group_->id(row) == static_cast<int>(*selected));
  success_->setVisible(controller_.isSuccessHeaderVisible());
  setRole(*title_, controller_.isTitleRed() ? "title error" : "title");
  cancel_->setText(toQString(controller_.cancelTitle()));
}

void LocationView::listLocations() {
  shownNames_ = controller_.locationNames();
  qDeleteAll(group_->buttons());
  for (size_t row = 0; row < shownNames_.size(); ++row) {
    auto* button = new QRadioButton(toQString(shownNames_[row]).replace(QLatin1Char('&'), QLatin1String("&&")));
    button->setObjectName(QStringLiteral("location%1").arg(row));
    button->setMinimumHeight(metrics::kRowHeight);
    group_->addButton(button, static_cast<int>(row));
    rows_->addWidget(button);
  }
  if (!group_->buttons().isEmpty()) setFocusProxy(group_->buttons().constFirst());
}

}  // namespace orvane

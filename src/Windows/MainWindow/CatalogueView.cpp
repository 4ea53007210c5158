#include "Windows/MainWindow/CatalogueView.h"

#include <QAction>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include "Controllers/ApplicationTableViewController.h"
#include "Windows/MainWindow/CatalogueGrid.h"
#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Symbols.h"
#include "Windows/Style/Text.h"

namespace orvane {

CatalogueView::CatalogueView(ApplicationTableViewController& controller)
    : controller_(controller),
      header_(makeLabel("catalogueHeader", "title")),
      searchButton_(makeIconButton("searchButton", QStringLiteral("search"), text("View.Catalogue.Search"))),
      searchField_(makeField("searchField", text("View.Catalogue.Search"))),
      hint_(makeLabel("catalogueHint", "secondary")),
      grid_(new CatalogueGrid(controller)) {
  header_->setWordWrap(false);
  hint_->setAlignment(Qt::AlignCenter);
  searchField_->setPlaceholderText(text("View.Catalogue.Search"));
  searchField_->setClearButtonEnabled(true);
  searchField_->installEventFilter(this);

  auto* top = new QHBoxLayout;
  top->setContentsMargins(metrics::kMargin, metrics::kMargin, metrics::kMargin, 0);
  top->setSpacing(metrics::kSpacing);
  top->addWidget(header_);
  top->addStretch(1);
  top->addWidget(searchField_, 2);
  top->addWidget(searchButton_);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(metrics::kSpacing);
  layout->addLayout(top);
  layout->addWidget(hint_, 1);
  layout->addWidget(grid_, 1000);

  connect(searchButton_, &QPushButton::clicked, this, [this] { controller_.onShowSearchButtonClick(); });
  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, searchButton_, &QPushButton::click);
  connect(searchField_, &QLineEdit::textEdited, this,
          [this](const QString& typed) { controller_.controlTextDidChange(typed.toStdString()); });
  // Clearing by the button is no edit to the toolkit.
  connect(searchField_, &QLineEdit::textChanged, this, [this](const QString& now) {
    if (now.isEmpty()) controller_.controlTextDidChange({});
  });
  connect(searchField_, &QLineEdit::returnPressed, this, [this] { controller_.openSelectedApplication(); });
  grid_->setOnTyping([this](const QString& typed) { type(typed); });
  controller_.setOnChange([this] { refresh(); });
  controller_.setOnFocus([this](ApplicationTableFocus focus) {
    QWidget& control = focus == ApplicationTableFocus::kGrid ? static_cast<QWidget&>(*grid_) : *searchField_;
    control.setFocus(Qt::OtherFocusReason);
  });
  setFocusProxy(grid_);
  refresh();
}

void CatalogueView::setConnected(bool isConnected) {
  if (std::exchange(isConnected_, isConnected) != isConnected) refresh();
}

void CatalogueView::refresh() {
  display(*header_, toQString(controller_.headerText()));
  searchField_->setVisible(controller_.isSearchFieldShown());
  display(*searchField_, toQString(controller_.searchText()));
  searchButton_->setVisible(!controller_.isSearchFieldShown());
  searchButton_->setEnabled(controller_.isShowSearchButtonEnabled());
  grid_->refresh();
  const bool isSearchEmpty = !controller_.isEmptyResultLabelHidden();
  display(*hint_, isSearchEmpty  ? toQString(controller_.emptyResultText())
                  : isConnected_ ? text("View.Catalogue.Empty")
                                 : text("View.Catalogue.NotConnected"));
  hint_->setVisible(controller_.appItems().empty());
}

// The first letter opens the search; those behind it find the field.
void CatalogueView::type(const QString& text) {
  controller_.showSearchField(true, false);
  if (!controller_.isSearchFieldShown()) return;
  searchField_->setFocus(Qt::OtherFocusReason);
  searchField_->end(false);
  searchField_->insert(text);
  controller_.controlTextDidChange(searchField_->text().toStdString());
}

bool CatalogueView::eventFilter(QObject* watched, QEvent* event) {
  if (watched != searchField_ || event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Escape:
      controller_.onCancelSearchClick();
      grid_->setFocus(Qt::OtherFocusReason);
      return true;
    case Qt::Key_Down:
      grid_->setFocus(Qt::TabFocusReason);
      return true;
    default:
      return false;
  }
}

}  // namespace orvane

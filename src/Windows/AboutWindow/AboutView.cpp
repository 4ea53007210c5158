#include "Windows/AboutWindow/AboutView.h"

#include <QLabel>
#include <QPushButton>
#include <QStackedLayout>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "Controllers/AboutWindowController.h"
#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Picture.h"
#include "Windows/Style/Text.h"

namespace orvane {

namespace {

constexpr QSize kMarkSize(96, 96);
constexpr int kLegalHeight = 320;

}  // namespace

AboutView::AboutView(AboutWindowController& controller) : controller_(controller), pages_(new QStackedLayout(this)) {
  pages_->addWidget(makeAboutPage());
  pages_->addWidget(makeLegalPage());
  controller_.setOnChange([this] { refresh(); });
  refresh();
}

QWidget* AboutView::makeAboutPage() {
  auto* page = new QWidget;
  QPushButton* legal = makeButton("legalButton", "link", text("AboutWindowController.WindowTitle.LegalPage"));
  QPushButton* help = makeButton("helpButton", "link", text("View.Menu.Help"));
  QPushButton* close = makeButton("closeButton", "primary", text("View.About.Close"));
  close->setDefault(true);

  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(metrics::kSpacing);
  layout->addStretch();
  layout->addWidget(new Picture(QStringLiteral(":/hicolor/scalable/apps/example.orvane.Connector.svg"), kMarkSize), 0,
                    Qt::AlignHCenter);
  QLabel* const kLabels[] = {makeLabel("aboutName", "title", text("ProductName.Orvane")),
                             makeLabel("aboutVersion", nullptr, toQString(controller_.versionText())),
                             makeLabel("aboutLegalNotice", "secondary", toQString(controller_.legalNotice()))};
  for (QLabel* label : kLabels) {
    label->setAlignment(Qt::AlignHCenter);
    layout->addWidget(label);
  }
  layout->addSpacing(metrics::kSpacing);
  layout->addStretch();
  layout->addLayout(buttonRow({legal, help}, {close}));

  connect(legal, &QPushButton::clicked, this, [this] { controller_.handleLegalInfoClick(); });
  connect(help, &QPushButton::clicked, this, [this] { controller_.handleHelpClick(); });
  connect(close, &QPushButton::clicked, this, [this] { window()->hide(); });
  clickOnEscape(*this, *close);
  page->setFocusProxy(close);
  return page;
}

QWidget* AboutView::makeLegalPage() {
  auto* page = new QWidget;
  QPushButton* back = makeButton("backButton", nullptr, text("UI.Buttons.Back"));
  auto* legal = new QTextBrowser;
  legal->setObjectName(QStringLiteral("legalText"));
  legal->setAccessibleName(text("AboutWindowController.WindowTitle.LegalPage"));
  legal->setOpenLinks(false);
  legal->setHtml(toQString(controller_.legalText()));
  legal->setMinimumHeight(kLegalHeight);

  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(metrics::kMargin);
  layout->addWidget(legal, 1);
  layout->addLayout(buttonRow({back}, {}));

  connect(legal, &QTextBrowser::anchorClicked, this,
          [this](const QUrl& address) { controller_.handleLegalLinkClick(address.toString().toStdString()); });
  connect(back, &QPushButton::clicked, this, [this] { controller_.handleBackClick(); });
  page->setFocusProxy(back);
  return page;
}

void AboutView::refresh() {
  setWindowTitle(toQString(controller_.windowTitle()));
  const int page = static_cast<int>(controller_.page());
  if (pages_->currentIndex() != page) {
    pages_->setCurrentIndex(page);
    pages_->currentWidget()->setFocus(Qt::OtherFocusReason);
  }
  setFocusProxy(pages_->currentWidget()->focusProxy());
}

}  // namespace orvane

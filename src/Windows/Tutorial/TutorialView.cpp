#include "Windows/Tutorial/TutorialView.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QVBoxLayout>

#include "Controllers/TutorialViewController.h"
#include "OrvaneCommon/TextFormat.h"
#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Picture.h"
#include "Windows/Style/Text.h"

namespace orvane {

namespace {

constexpr QSize kPictureSize(320, 180);
constexpr int kTextLines = 7;  // what the longest page takes, so that nothing jumps from one to the next

QString pictureOfPage(int page) { return QStringLiteral(":/pictures/tutorial-%1.svg").arg(page + 1); }

}  // namespace

TutorialView::TutorialView(TutorialViewController& controller)
    : controller_(controller),
      picture_(new Picture(pictureOfPage(0), kPictureSize)),
      title_(makeLabel("tutorialTitle", "title")),
      text_(makeLabel("tutorialText", nullptr)),
      pages_(new QButtonGroup(this)),
      showOnStart_(makeCheckBox("showOnStartBox", text("View.Tutorial.ShowOnStart"))),
      skip_(makeButton("skipButton", nullptr, text("UI.Buttons.Skip"))),
      next_(makeButton("nextButton", "primary")) {
  setObjectName(QStringLiteral("tutorial"));
  next_->setDefault(true);
  text_->setAlignment(Qt::AlignTop);
  text_->setMinimumHeight(text_->fontMetrics().lineSpacing() * kTextLines);

  auto* dots = new QHBoxLayout;
  dots->setSpacing(metrics::kSpacing / 2);
  dots->addStretch();
  for (int page = 0; page < TutorialViewController::kPageCount; ++page) {
    auto* dot = new QRadioButton;
    dot->setObjectName(QStringLiteral("page%1").arg(page));
    dot->setAccessibleName(
        toQString(formatText(localizedText("View.Tutorial.Page"),
                             {std::to_string(page + 1), std::to_string(TutorialViewController::kPageCount)})));
    pages_->addButton(dot, page);
    dots->addWidget(dot);
  }
  dots->addStretch();

  auto* card = new QFrame;
  card->setObjectName(QStringLiteral("tutorialCard"));
  card->setProperty("role", "card");
  card->setMaximumWidth(metrics::kPageWidth + 2 * metrics::kDialogMargin);
  auto* layout = new QVBoxLayout(card);
  layout->setContentsMargins(metrics::kDialogMargin, metrics::kDialogMargin, metrics::kDialogMargin,
                             metrics::kDialogMargin);
  layout->setSpacing(metrics::kSpacing);
  layout->addWidget(picture_, 0, Qt::AlignHCenter);
  layout->addWidget(title_);
  layout->addWidget(text_, 1);
  layout->addLayout(dots);
  layout->addWidget(showOnStart_);
  layout->addSpacing(metrics::kSpacing);
  layout->addLayout(buttonRow({skip_}, {next_}));
  auto* around = new QGridLayout(this);
  around->addWidget(card, 1, 1);
  for (const int side : {0, 2}) around->setColumnStretch(side, 1), around->setRowStretch(side, 1);
  around->setColumnStretch(1, 1000);
  clickOnEscape(*this, *skip_);
  turnPagesBy(Qt::Key_Left, -1);
  turnPagesBy(Qt::Key_Right, 1);

  connect(pages_, &QButtonGroup::idClicked, this, [this](int page) { controller_.onPageSelected(page); });
  connect(showOnStart_, &QCheckBox::toggled, this,
          [this](bool isChecked) { controller_.setShowOnStartChecked(isChecked); });
  connect(skip_, &QPushButton::clicked, this, [this] { controller_.onSkipClicked(); });
  connect(next_, &QPushButton::clicked, this, [this] { controller_.onNextPageClicked(); });
  controller_.setOnChange([this] { refresh(); });
  setFocusProxy(next_);
  refresh();
}

void TutorialView::refresh() {
  const int page = controller_.page();
  picture_->setResource(pictureOfPage(page));
  display(*title_, toQString(controller_.pageTitle()));
  display(*text_, toQString(controller_.pageText()));
  pages_->button(page)->setChecked(true);
  display(*showOnStart_, controller_.isShowOnStartChecked());
  next_->setText(page + 1 < TutorialViewController::kPageCount ? text("UI.Buttons.Next") : text("UI.Buttons.Done"));
}

// Buttons would take these keys for themselves.
void TutorialView::turnPagesBy(Qt::Key key, int step) {
  auto* shortcut = new QShortcut(QKeySequence(key), this);
  shortcut->setContext(Qt::WidgetWithChildrenShortcut);
  connect(shortcut, &QShortcut::activated, this,
          [this, step] { controller_.onPageSelected(controller_.page() + step); });
}

bool TutorialView::focusNextPrevChild(bool next) {
  moveFocusInside(*this, next);
  return true;
}

void TutorialView::keyPressEvent(QKeyEvent* event) { pressDialogKey(*this, *event); }

}  // namespace orvane

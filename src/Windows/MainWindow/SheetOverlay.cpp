#include "Windows/MainWindow/SheetOverlay.h"

#include <QApplication>
#include <QFrame>
#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Theme.h"

namespace orvane {

namespace {

constexpr int kPatienceMilliseconds = 150;

}  // namespace

SheetOverlay::SheetOverlay(QWidget* window)
    : QWidget(window), card_(new QFrame(this)), cardLayout_(new QVBoxLayout(card_)) {
  setObjectName(QStringLiteral("sheet"));
  setFocusPolicy(Qt::StrongFocus);
  card_->setObjectName(QStringLiteral("sheetCard"));
  card_->setProperty("role", "card");
  cardLayout_->setContentsMargins(metrics::kDialogMargin, metrics::kDialogMargin, metrics::kDialogMargin,
                                  metrics::kDialogMargin);
  patience_.setSingleShot(true);
  connect(&patience_, &QTimer::timeout, this, [this] {
    card_->show();
    placeCard();
    takeFocus();
    update();
  });
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { keepFocus(now); });
  hide();
}

void SheetOverlay::attach(QWidget* content, bool isPatient) {
  if (content_ != nullptr) detach(content_);
  if (!isVisible()) focusBehind_ = window()->focusWidget();
  content_ = content;
  setAccessibleName(content->windowTitle());
  cardLayout_->addWidget(content);
  content->show();
  card_->setVisible(!isPatient);
  raise();
  show();
  placeCard();
  takeFocus();
  if (isPatient) patience_.start(kPatienceMilliseconds);
}

void SheetOverlay::detach(QWidget* content) {
  if (content_ != content || content == nullptr) return;
  patience_.stop();
  content_ = nullptr;
  content->hide();
  cardLayout_->removeWidget(content);
  content->setParent(nullptr);
  hide();
  if (focusBehind_ != nullptr && focusBehind_->isVisible()) focusBehind_->setFocus(Qt::OtherFocusReason);
}

void SheetOverlay::takeFocus() {
  QWidget* first = card_->isVisible() && content_ != nullptr ? content_->focusProxy() : nullptr;
  if (first != nullptr && first->isVisible() && first->isEnabled()) {
    first->setFocus(Qt::OtherFocusReason);
  } else {
    setFocus(Qt::OtherFocusReason);
    if (card_->isVisible()) focusNextPrevChild(true);
  }
}

// What asks for the focus below gets it when the sheet is gone.
void SheetOverlay::keepFocus(QWidget* wanted) {
  if (!isVisible() || wanted == nullptr || wanted->window() != window()) return;
  if (wanted == this || isAncestorOf(wanted)) return;
  focusBehind_ = wanted;
  takeFocus();
}

bool SheetOverlay::focusNextPrevChild(bool next) {
  moveFocusInside(*this, next);
  return true;
}

void SheetOverlay::keyPressEvent(QKeyEvent* event) {
  if (content_ == nullptr) return;
  if (event->key() == Qt::Key_Escape) {
    clickCloseButton(*content_);
  } else {
    pressDialogKey(*content_, *event);
  }
  event->accept();
}

void SheetOverlay::paintEvent(QPaintEvent*) {
  if (card_->isVisible()) QPainter(this).fillRect(rect(), colors().shade);
}

void SheetOverlay::resizeEvent(QResizeEvent*) { placeCard(); }

bool SheetOverlay::event(QEvent* event) {
  if (event->type() == QEvent::LayoutRequest) placeCard();
  return QWidget::event(event);
}

void SheetOverlay::placeCard() {
  const int width =
      std::min(this->width() - 2 * metrics::kMargin,
               std::max(metrics::kPageWidth + 2 * metrics::kDialogMargin, card_->minimumSizeHint().width()));
  const int wanted = cardLayout_->hasHeightForWidth() ? cardLayout_->totalHeightForWidth(width)
                                                      : cardLayout_->totalSizeHint().height();
  const int height = std::min(this->height() - 2 * metrics::kMargin, wanted);
  card_->setGeometry((this->width() - width) / 2, (this->height() - height) / 2, width, height);
}

}  // namespace orvane

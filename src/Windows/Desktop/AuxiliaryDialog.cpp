#include "Windows/Desktop/AuxiliaryDialog.h"

#include <QCloseEvent>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"

namespace orvane {

AuxiliaryDialog::AuxiliaryDialog(QWidget* parent) : QDialog(parent) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(metrics::kDialogMargin, metrics::kDialogMargin, metrics::kDialogMargin,
                             metrics::kDialogMargin);
}

void AuxiliaryDialog::setContent(QWidget* content) {
  if (content_ == content) return;
  releaseContent();
  content_ = content;
  setObjectName(content->objectName() + QStringLiteral("Dialog"));
  setWindowTitle(content->windowTitle());
  connect(content, &QWidget::windowTitleChanged, this, &QWidget::setWindowTitle);
  layout()->addWidget(content);
  content->show();
}

void AuxiliaryDialog::releaseContent() {
  if (content_ == nullptr) return;
  content_->disconnect(this);
  content_->hide();
  layout()->removeWidget(content_);
  content_->setParent(nullptr);
  content_ = nullptr;
}

void AuxiliaryDialog::placeOn(const QWidget* window) {
  const QRect screen = (window != nullptr ? window->screen() : this->screen())->availableGeometry();
  const int width = std::min(
      std::max(metrics::kPageWidth + 2 * metrics::kDialogMargin, layout()->minimumSize().width()), screen.width());
  const int height =
      layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width) : layout()->totalSizeHint().height();
  resize(width, std::min(height, screen.height()));
  const QRect around = window != nullptr ? window->geometry() : screen;
  const QPoint corner = around.center() - rect().center();
  move(std::clamp(corner.x(), screen.left(), std::max(screen.left(), screen.right() - this->width())),
       std::clamp(corner.y(), screen.top(), std::max(screen.top(), screen.bottom() - this->height())));
}

void AuxiliaryDialog::reject() {
  if (content_ != nullptr) clickCloseButton(*content_);
}

void AuxiliaryDialog::closeEvent(QCloseEvent* event) {
  event->ignore();
  reject();
}

// A text that comes later may need more room.
bool AuxiliaryDialog::event(QEvent* event) {
  const bool isHandled = QDialog::event(event);
  if (event->type() == QEvent::LayoutRequest && isVisible() && layout()->hasHeightForWidth())
    resize(width(), std::max(height(),
                             std::min(layout()->totalHeightForWidth(width()), screen()->availableGeometry().height())));
  return isHandled;
}

}  // namespace orvane

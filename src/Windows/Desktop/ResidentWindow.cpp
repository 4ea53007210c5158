#include "Windows/Desktop/ResidentWindow.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QPushButton>

#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Text.h"

namespace orvane {

ResidentWindow::ResidentWindow(QMenu& menu)
    : button_(makeButton("residentButton", nullptr, text("ProductName.Orvane"))) {
  setObjectName(QStringLiteral("residentWindow"));
  setWindowTitle(text("ProductName.Orvane"));
  button_->setIconSize(QSize(metrics::kIcon, metrics::kIcon));
  button_->setAccessibleName(text("View.Resident.Menu"));
  auto* layout = new QHBoxLayout(this);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  layout->addWidget(button_);
  connect(button_, &QPushButton::clicked, this,
          [this, &menu] { menu.popup(button_->mapToGlobal(QPoint(0, button_->height()))); });
}

void ResidentWindow::setPicture(const QIcon& picture) { button_->setIcon(picture); }

void ResidentWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  showMinimized();
}

}  // namespace orvane

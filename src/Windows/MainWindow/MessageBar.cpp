#include "Windows/MainWindow/MessageBar.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Text.h"

namespace orvane {

namespace {

constexpr int kShownMilliseconds = 8000;

}  // namespace

MessageBar::MessageBar(QWidget* window) : QFrame(window), text_(makeLabel("messageText", nullptr)) {
  setObjectName(QStringLiteral("messageBar"));
  setProperty("role", "card");
  QPushButton* close = makeIconButton("closeMessageButton", QStringLiteral("close"), text("View.Message.Close"));
  auto* layout = new QHBoxLayout(this);
  layout->addWidget(text_, 1);
  layout->addWidget(close, 0, Qt::AlignTop);
  connect(close, &QPushButton::clicked, this, &QWidget::hide);
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, &QWidget::hide);
  hide();
}

void MessageBar::showMessage(const QString& title, const QString& text) {
  display(*text_, title.isEmpty() ? text : title + QLatin1Char('\n') + text);
  show();
  raise();
  place();
  timer_.start(kShownMilliseconds);
  QAccessibleEvent alert(text_, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void MessageBar::place() {
  const QRect area = parentWidget()->rect().adjusted(metrics::kMargin, 0, -metrics::kMargin, -metrics::kMargin);
  const int height = heightForWidth(area.width());
  setGeometry(area.left(), area.bottom() - height, area.width(), height);
}

}  // namespace orvane

#include "Windows/Style/Controls.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>

#include "Windows/Style/Metrics.h"
#include "Windows/Style/Symbols.h"

namespace orvane {

namespace {

void dress(QWidget& widget, const char* objectName, const char* role) {
  widget.setObjectName(QLatin1String(objectName));
  if (role != nullptr) widget.setProperty("role", role);
}

}  // namespace

QLabel* makeLabel(const char* objectName, const char* role, const QString& text) {
  auto* label = new QLabel(text);
  dress(*label, objectName, role);
  label->setWordWrap(true);
  label->setTextFormat(Qt::PlainText);  // much of what is shown comes from a broker
  return label;
}

QPushButton* makeButton(const char* objectName, const char* role, const QString& text) {
  auto* button = new QPushButton(text);
  dress(*button, objectName, role);
  button->setAutoDefault(false);
  button->setCursor(Qt::ArrowCursor);
  return button;
}

QPushButton* makeIconButton(const char* objectName, const QString& symbol, const QString& text) {
  QPushButton* button = makeButton(objectName, "icon");
  button->setIcon(symbolIcon(symbol));
  button->setIconSize(QSize(metrics::kIcon, metrics::kIcon));
  button->setAccessibleName(text);
  button->setToolTip(text);
  button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  return button;
}

QLineEdit* makeField(const char* objectName, const QString& label) {
  auto* field = new QLineEdit;
  dress(*field, objectName, nullptr);
  field->setAccessibleName(label);
  return field;
}

QLineEdit* makeSecretField(const char* objectName, const QString& label) {
  QLineEdit* field = makeField(objectName, label);
  field->setEchoMode(QLineEdit::Password);
  field->setInputMethodHints(Qt::ImhHiddenText | Qt::ImhSensitiveData | Qt::ImhNoPredictiveText |
                             Qt::ImhNoAutoUppercase);
  return field;
}

QBoxLayout* buttonRow(std::initializer_list<QWidget*> left, std::initializer_list<QWidget*> right) {
  auto* row = new QHBoxLayout;
  row->setSpacing(metrics::kSpacing);
  for (QWidget* widget : left) row->addWidget(widget);
  row->addStretch();
  for (QWidget* widget : right) row->addWidget(widget);
  return row;
}

void show(QLabel& label, const QString& text) {
  if (label.text() != text) label.setText(text);
}

void show(QLineEdit& field, const QString& text) {
  if (field.text() == text) return;
  const QSignalBlocker blocker(field);
  field.setText(text);
}

void clickOnEscape(QWidget& widget, QPushButton& button) {
  auto* shortcut = new QShortcut(QKeySequence(Qt::Key_Escape), &widget);
  shortcut->setContext(Qt::WidgetWithChildrenShortcut);
  QObject::connect(shortcut, &QShortcut::activated, &button, [&button] {
    if (button.isEnabled()) button.click();
  });
}

}  // namespace orvane

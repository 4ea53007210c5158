#include "Windows/Style/Controls.h"

#include <QAbstractButton>
#include <QApplication>
#include <QBoxLayout>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStyle>
#include <QWheelEvent>
#include <algorithm>

#include "Windows/Style/Metrics.h"
#include "Windows/Style/Symbols.h"
#include "Windows/Style/Text.h"

namespace orvane {

namespace {

constexpr const char* kCloseButton = "closeButton";

void dress(QWidget& widget, const char* objectName, const char* role) {
  widget.setObjectName(QLatin1String(objectName));
  if (role != nullptr) widget.setProperty("role", role);
}

class PopUpButton : public QComboBox {
 protected:
  void paintEvent(QPaintEvent* event) override {
    QComboBox::paintEvent(event);
    QPainter painter(this);
    const QRect end(width() - metrics::kIcon - metrics::kSpacing / 2, 0, metrics::kIcon, height());
    symbolIcon(QStringLiteral("chevron-down"))
        .paint(&painter, end, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
  }
  void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

class ScrollingColumn : public QScrollArea {
 public:
  QSize minimumSizeHint() const override {
    const int width = widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width();
    return {width, QScrollArea::minimumSizeHint().height()};
  }
};

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

QCheckBox* makeCheckBox(const char* objectName, const QString& text) {
  auto* box = new QCheckBox(text);
  dress(*box, objectName, nullptr);
  return box;
}

QComboBox* makePopUpButton(const char* objectName) {
  auto* button = new PopUpButton;
  dress(*button, objectName, nullptr);
  button->setFocusPolicy(Qt::StrongFocus);
  return button;
}

QScrollArea* scrolling(const char* objectName, QWidget* content) {
  auto* area = new ScrollingColumn;
  dress(*area, objectName, nullptr);
  content->setProperty("role", "plain");
  area->setWidget(content);
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area->setFocusPolicy(Qt::NoFocus);
  // By whatever way a control got the focus: assistive technology and shortcuts don't go by the tab order.
  QObject::connect(qApp, &QApplication::focusChanged, area, [area](QWidget*, QWidget* now) {
    if (now != nullptr && area->widget()->isAncestorOf(now)) area->ensureWidgetVisible(now);
  });
  return area;
}

QVBoxLayout* addCard(QVBoxLayout& layout, const QString& heading) {
  auto* card = new QFrame;
  card->setProperty("role", "card");
  auto* inner = new QVBoxLayout(card);
  inner->setContentsMargins(metrics::kMargin, metrics::kMargin, metrics::kMargin, metrics::kMargin);
  inner->setSpacing(metrics::kSpacing);
  inner->addWidget(makeLabel("heading", "heading", heading));
  layout.addWidget(card);
  return inner;
}

QWidget* labelled(const QString& label, QWidget* control) {
  auto* pair = new QWidget;
  auto* column = new QVBoxLayout(pair);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(metrics::kSpacing / 2);
  QLabel* name = makeLabel("controlLabel", "secondary", label);
  name->setBuddy(control);
  control->setAccessibleName(label);
  column->addWidget(name);
  column->addWidget(control);
  return pair;
}

void setRole(QWidget& widget, const char* role) {
  if (widget.property("role").toString() == QLatin1String(role)) return;
  widget.setProperty("role", role);
  widget.style()->unpolish(&widget);
  widget.style()->polish(&widget);
}

QBoxLayout* buttonRow(std::initializer_list<QWidget*> left, std::initializer_list<QWidget*> right) {
  auto* row = new QHBoxLayout;
  row->setSpacing(metrics::kSpacing);
  for (QWidget* widget : left) row->addWidget(widget);
  row->addStretch();
  for (QWidget* widget : right) row->addWidget(widget);
  return row;
}

void display(QLabel& label, const QString& text) {
  if (label.text() != text) label.setText(text);
}

void display(QLineEdit& field, const QString& text) {
  if (field.text() == text) return;
  const QSignalBlocker blocker(field);
  field.setText(text);
}

void display(QCheckBox& box, bool isChecked) {
  const QSignalBlocker blocker(box);
  box.setChecked(isChecked);
}

void showSecret(QLineEdit& field, bool hasSecret) {
  if (!hasSecret) display(field, {});
  field.setPlaceholderText(hasSecret ? QString(8, QChar(0x2022)) : QString());
}

void showError(QLabel& label, const std::optional<std::string>& text) {
  display(label, text ? toQString(*text) : QString());
  label.setVisible(text.has_value());
}

void clickOnEscape(QWidget& widget, QPushButton& button) {
  const bool hasShortcut = widget.property(kCloseButton).isValid();
  widget.setProperty(kCloseButton, QVariant::fromValue(static_cast<QObject*>(&button)));
  if (hasShortcut) return;
  auto* shortcut = new QShortcut(QKeySequence(Qt::Key_Escape), &widget);
  shortcut->setContext(Qt::WidgetWithChildrenShortcut);
  QObject::connect(shortcut, &QShortcut::activated, &widget, [&widget] { clickCloseButton(widget); });
}

bool clickCloseButton(QWidget& widget) {
  auto* button = qobject_cast<QPushButton*>(widget.property(kCloseButton).value<QObject*>());
  if (button == nullptr) return false;
  button->click();
  return true;
}

void moveFocusInside(QWidget& widget, bool next) {
  const auto beside = [next](QWidget* control) {
    return next ? control->nextInFocusChain() : control->previousInFocusChain();
  };
  QWidget* const from = widget.focusWidget() != nullptr ? widget.focusWidget() : &widget;
  for (QWidget* control = beside(from); control != from; control = beside(control)) {
    if (!widget.isAncestorOf(control) || !control->isVisible() || !control->isEnabled()) continue;
    if (!(control->focusPolicy() & Qt::TabFocus) || control->focusProxy() != nullptr) continue;
    const auto* radio = qobject_cast<const QRadioButton*>(control);  // the arrows lead to the others of its group
    if (radio != nullptr && !radio->isChecked() && radio->group() != nullptr && radio->group()->checkedButton())
      continue;
    control->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return;
  }
}

void pressDialogKey(QWidget& widget, QKeyEvent& event) {
  event.ignore();
  if (event.key() != Qt::Key_Return && event.key() != Qt::Key_Enter) return;
  const QList<QPushButton*> buttons = widget.findChildren<QPushButton*>();
  const auto click = [&](auto isWanted) {
    const auto found = std::ranges::find_if(
        buttons, [&](const QPushButton* button) { return button->isVisible() && isWanted(*button); });
    if (found == buttons.end()) return false;
    event.accept();
    (*found)->click();
    return true;
  };
  static_cast<void>(click([](const QPushButton& button) { return button.hasFocus(); }) ||
                    click([](const QPushButton& button) { return button.isDefault(); }));
}

}  // namespace orvane

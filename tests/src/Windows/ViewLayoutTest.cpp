// What must hold of every view, in every language.

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include <gmock/gmock.h>

#include "ViewFixture.h"

namespace {

using Widgets = std::vector<QWidget*>;

QString read(QAccessibleInterface& interface, QAccessible::Text what) { return interface.text(what).trimmed(); }

std::string describe(const QWidget& widget) {
  return std::string(widget.metaObject()->className()) + " " + widget.objectName().toStdString();
}

std::vector<std::string> names(const Widgets& widgets) {
  std::vector<std::string> names;
  for (const QWidget* widget : widgets) names.push_back(describe(*widget));
  return names;
}

// Where it is, in the coordinates of the view.
QRect placeIn(const QWidget& view, const QWidget& widget) {
  return QRect(widget.mapTo(const_cast<QWidget*>(&view), QPoint()), widget.size());
}

template <class Condition>
Widgets visibleWidgets(const QWidget& view, Condition condition) {
  Widgets found;
  for (QWidget* widget : view.findChildren<QWidget*>()) {
    if (widget->isVisible() && condition(*widget)) found.push_back(widget);
  }
  return found;
}

// What the tab key is to come to: of a group of radio buttons the one that is checked, or else the first.
bool takesTab(const QWidget& widget) {
  if (!(widget.focusPolicy() & Qt::TabFocus) || !widget.isEnabled() || widget.focusProxy() != nullptr) return false;
  const auto* radio = qobject_cast<const QRadioButton*>(&widget);
  if (radio == nullptr || radio->isChecked()) return true;
  const auto group = radio->parentWidget()->findChildren<QRadioButton*>();
  return radio == group.front() && std::ranges::none_of(group, &QRadioButton::isChecked);
}

bool showsText(const QWidget& widget) {
  return qobject_cast<const QLabel*>(&widget) || qobject_cast<const QPushButton*>(&widget) ||
         qobject_cast<const QCheckBox*>(&widget) || qobject_cast<const QRadioButton*>(&widget) ||
         qobject_cast<const QComboBox*>(&widget);
}

// The room that its text needs, given the width that it has.
QSize neededSize(const QWidget& widget) {
  const auto* label = qobject_cast<const QLabel*>(&widget);
  if (label == nullptr || !label->wordWrap()) return widget.sizeHint();
  int longestWord = 0;
  const QFontMetrics metrics(label->font());
  for (const QString& word : label->text().split(QRegularExpression("\\s")))
    if (!word.isEmpty() && word.at(0).script() < QChar::Script_Hangul)
      longestWord = std::max(longestWord, metrics.horizontalAdvance(word));
  return {longestWord, label->heightForWidth(label->width())};
}

class ViewLayout : public testing::Test {
 protected:
  // Calls back with each surface in turn, shown.
  template <class Check>
  static void forEachSurface(const Check& check) {
    for (const SurfaceOfTest& surface : kSurfaces) {
      const testing::ScopedTrace trace(__FILE__, __LINE__, surface.name);
      ViewFixture fixture;
      check(surface.show(fixture));
    }
  }
};

TEST_F(ViewLayout, EveryControlHasANameARoleAndAPlaceInTheTabOrder) {
  forEachSurface([](QWidget& view) {
    for (QWidget* widget : visibleWidgets(view, [](auto& each) { return each.focusPolicy() & Qt::TabFocus; })) {
      QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
      EXPECT_FALSE(read(*interface, QAccessible::Name).isEmpty()) << describe(*widget);
      EXPECT_FALSE(interface->role() == QAccessible::NoRole || interface->role() == QAccessible::Client)
          << describe(*widget);
      EXPECT_FALSE(widget->objectName().isEmpty()) << describe(*widget);
    }
    Widgets reached;
    for (QWidget* focused = QApplication::focusWidget(); !std::ranges::count(reached, focused);
         focused = QApplication::focusWidget()) {
      ASSERT_NE(focused, nullptr);
      for (const QWidget* before : reached)
        EXPECT_FALSE(reached.front() != before && placeIn(view, *focused).bottom() < placeIn(view, *before).top())
            << describe(*focused) << " stands above " << describe(*before);
      reached.push_back(focused);
      QTest::keyClick(focused, Qt::Key_Tab);
    }
    EXPECT_THAT(names(reached), testing::UnorderedElementsAreArray(names(visibleWidgets(view, takesTab))));
  });
}

TEST_F(ViewLayout, NoTextIsCut) {
  forEachSurface([](QWidget& view) {
    for (QWidget* widget : visibleWidgets(view, showsText)) {
      const QSize needed = neededSize(*widget);
      EXPECT_GE(widget->width(), needed.width()) << describe(*widget);
      EXPECT_GE(widget->height(), needed.height()) << describe(*widget);
      for (QWidget* around = widget->parentWidget(); around != &view; around = around->parentWidget()) {
        EXPECT_TRUE(around->rect().contains(placeIn(*around, *widget)))
            << describe(*widget) << " in " << describe(*around);
      }
      EXPECT_TRUE(view.rect().contains(placeIn(view, *widget))) << describe(*widget);
    }
  });
}

}  // namespace

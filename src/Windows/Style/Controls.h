#pragma once

#include <QString>
#include <initializer_list>

class QBoxLayout;
class QCheckBox;
class QKeySequence;
class QLabel;
class QLineEdit;
class QPushButton;
class QWidget;

/// @file
/// The controls that surfaces are made of. A maker's object belongs to the parent, or to the layout that it is put in.

namespace orvane {

/// @param role  as in applyTheme(); null for plain text. The text wraps.
QLabel* makeLabel(const char* objectName, const char* role, const QString& text = {});
/// @param role  null for an ordinary button.
QPushButton* makeButton(const char* objectName, const char* role, const QString& text = {});
/// A button that is a symbol alone; the text is its name to assistive technology, and its tool tip.
QPushButton* makeIconButton(const char* objectName, const QString& symbol, const QString& text);
/// A field whose label reads `label`: its name to assistive technology.
QLineEdit* makeField(const char* objectName, const QString& label);
/// A field for a secret: its text is shown to nobody, assistive technology included, and can't be copied.
QLineEdit* makeSecretField(const char* objectName, const QString& label);

/// A row of buttons: the first group at the left, the second at the right.
QBoxLayout* buttonRow(std::initializer_list<QWidget*> left, std::initializer_list<QWidget*> right);

/// Show a text where it isn't shown yet, so that cursor and selection of a field stay where they are.
void show(QLabel& label, const QString& text);
void show(QLineEdit& field, const QString& text);

/// Escape, wherever the focus is in the widget, clicks the button if that is enabled.
void clickOnEscape(QWidget& widget, QPushButton& button);

}  // namespace orvane

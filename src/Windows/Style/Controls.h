#pragma once

#include <QString>
#include <initializer_list>
#include <optional>
#include <string>

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QPushButton;
class QScrollArea;
class QVBoxLayout;
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

QCheckBox* makeCheckBox(const char* objectName, const QString& text);
/// A pop-up button. The mouse's wheel scrolls what it stands in, and chooses nothing.
QComboBox* makePopUpButton(const char* objectName);
/// An area without a frame that scrolls its content up and down, never sideways: it is as wide as the content needs to
/// be. Takes the content over.
QScrollArea* scrolling(const char* objectName, QWidget* content);
/// A card with a heading, at the end of the layout. @return its own layout, whose things it owns.
QVBoxLayout* addCard(QVBoxLayout& layout, const QString& heading);
/// A control behind its label, which becomes its name to assistive technology too.
QWidget* labelled(const QString& label, QWidget* control);
/// Changes the looks of a widget that is shown already.
void setRole(QWidget& widget, const char* role);

/// A row of buttons: the first group at the left, the second at the right.
QBoxLayout* buttonRow(std::initializer_list<QWidget*> left, std::initializer_list<QWidget*> right);

/// Show a text where it isn't shown yet, so that cursor and selection of a field stay where they are.
void display(QLabel& label, const QString& text);
void display(QLineEdit& field, const QString& text);
void display(QCheckBox& box, bool isChecked);
/// A secret that the field's user hasn't typed shows as dots behind an empty text. Without a secret the field is empty.
void showSecret(QLineEdit& field, bool hasSecret);
/// Nothing hides the label.
void showError(QLabel& label, const std::optional<std::string>& text);

/// Escape, wherever the focus is in the widget, clicks the button if that is enabled; and so does whoever closes the
/// window that the widget fills.
void clickOnEscape(QWidget& widget, QPushButton& button);
/// Clicks the button that clickOnEscape() names for the widget. @return whether there is one.
bool clickCloseButton(QWidget& widget);
/// Gives the focus to the next control of the widget, or the one before, around and around: for what covers all else.
void moveFocusInside(QWidget& widget, bool next);
/// What a key does in `widget` that nothing there has taken: Return clicks the button with the focus, else the default
/// one. Any other key is ignored.
void pressDialogKey(QWidget& widget, QKeyEvent& event);

}  // namespace orvane

#include "Windows/Style/Theme.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QString>
#include <QStyleFactory>

namespace orvane {

namespace {

const Colors kLight{.window = QColor(0xF5, 0xF6, 0xF8),
                    .surface = QColor(0xFF, 0xFF, 0xFF),
                    .raised = QColor(0xEA, 0xED, 0xF2),
                    .border = QColor(0xD3, 0xD8, 0xE0),
                    .text = QColor(0x1A, 0x20, 0x2C),
                    .secondaryText = QColor(0x56, 0x60, 0x70),
                    .disabledText = QColor(0x9A, 0xA2, 0xAF),
                    .accent = QColor(0x2B, 0x5F, 0xD9),
                    .accentRaised = QColor(0x1F, 0x4F, 0xC2),
                    .accentText = QColor(0xFF, 0xFF, 0xFF),
                    .selection = QColor(0xDC, 0xE6, 0xFC),
                    .error = QColor(0xB4, 0x23, 0x2C),
                    .shade = QColor(0x10, 0x16, 0x22, 0x59)};

const Colors kDark{.window = QColor(0x1A, 0x1D, 0x23),
                   .surface = QColor(0x24, 0x28, 0x30),
                   .raised = QColor(0x30, 0x35, 0x3F),
                   .border = QColor(0x3C, 0x43, 0x4F),
                   .text = QColor(0xEC, 0xEF, 0xF4),
                   .secondaryText = QColor(0xA9, 0xB2, 0xC0),
                   .disabledText = QColor(0x6B, 0x74, 0x82),
                   .accent = QColor(0x7F, 0xA5, 0xFF),
                   .accentRaised = QColor(0x9A, 0xB9, 0xFF),
                   .accentText = QColor(0x10, 0x16, 0x22),
                   .selection = QColor(0x2C, 0x3C, 0x60),
                   .error = QColor(0xFF, 0x8A, 0x8F),
                   .shade = QColor(0x00, 0x00, 0x00, 0x80)};

ColorScheme currentScheme = ColorScheme::kLight;

QPalette paletteOf(const Colors& colors) {
  const struct {
    QPalette::ColorRole role;
    QColor color;
  } kRoles[] = {
      {QPalette::Window, colors.window},
      {QPalette::WindowText, colors.text},
      {QPalette::Base, colors.surface},
      {QPalette::AlternateBase, colors.window},
      {QPalette::Text, colors.text},
      {QPalette::PlaceholderText, colors.secondaryText},
      {QPalette::Button, colors.surface},
      {QPalette::ButtonText, colors.text},
      {QPalette::BrightText, colors.error},
      {QPalette::Highlight, colors.accent},
      {QPalette::HighlightedText, colors.accentText},
      {QPalette::Link, colors.accent},
      {QPalette::LinkVisited, colors.accent},
      {QPalette::ToolTipBase, colors.surface},
      {QPalette::ToolTipText, colors.text},
      {QPalette::Light, colors.raised},
      {QPalette::Midlight, colors.raised},
      {QPalette::Mid, colors.border},
      {QPalette::Dark, colors.border},
      {QPalette::Shadow, colors.border},
  };
  QPalette palette;
  for (const auto& row : kRoles) palette.setColor(row.role, row.color);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, colors.disabledText);
  return palette;
}

// @name@ stands for a colour of Colors.
const char* const kStyleSheet = R"(
QToolTip { background: @surface@; color: @text@; border: 1px solid @border@; padding: 4px; }
QLabel[role="title"] { font-size: 16pt; font-weight: 600; }
QLabel[role="title error"] { font-size: 16pt; font-weight: 600; color: @error@; }
QLabel[role="heading"] { font-weight: 600; }
QLabel[role="secondary"] { color: @secondaryText@; }
QLabel[role="error"] { color: @error@; }
QFrame[role="card"] { background: @surface@; border: 1px solid @border@; border-radius: 8px; }
QFrame[role="panel"] { background: @window@; border: none; border-right: 1px solid @border@; }
QFrame[role="bar"] { background: @surface@; border: none; border-bottom: 1px solid @border@; }
QScrollArea, QScrollArea > QWidget > QWidget[role="plain"] { background: transparent; border: none; }

QPushButton { background: @surface@; border: 1px solid @border@; border-radius: 6px; padding: 6px 16px; min-height: 20px; outline: none; }
QPushButton:hover { background: @raised@; }
QPushButton:pressed { background: @border@; }
QPushButton:focus { border: 2px solid @accent@; padding: 5px 15px; }
QPushButton:disabled { color: @disabledText@; }
QPushButton[role="primary"] { background: @accent@; border-color: @accent@; color: @accentText@; font-weight: 600; }
QPushButton[role="primary"]:hover { background: @accentRaised@; }
QPushButton[role="primary"]:focus { border: 2px solid @text@; }
QPushButton[role="primary"]:disabled { background: @raised@; border-color: @border@; color: @disabledText@; }
QPushButton[role="danger"] { color: @error@; }
QPushButton[role="link"] { background: transparent; border: 1px solid transparent; color: @accent@; padding: 4px 2px; text-align: left; }
QPushButton[role="link"]:hover { text-decoration: underline; }
QPushButton[role="link"]:focus { border: 1px solid @accent@; }
QPushButton[role="link"]:disabled { color: @disabledText@; }
QPushButton[role="row"], QPushButton[role="row current"] { background: transparent; border: 1px solid transparent; padding: 6px 8px; text-align: left; }
QPushButton[role="row current"] { background: @selection@; font-weight: 600; }
QPushButton[role="row"]:hover { background: @raised@; }
QPushButton[role="row"]:focus, QPushButton[role="row current"]:focus { border: 1px solid @accent@; }
QPushButton[role="icon"], QToolButton { background: transparent; border: 1px solid transparent; border-radius: 6px; padding: 6px; min-height: 0; }
QPushButton[role="icon"]:hover, QToolButton:hover { background: @raised@; }
QPushButton[role="icon"]:pressed, QToolButton:pressed { background: @border@; }
QPushButton[role="icon"]:focus, QToolButton:focus { border: 1px solid @accent@; }
QToolButton:disabled { color: @disabledText@; }
QToolButton::menu-indicator { image: none; }

QCheckBox, QRadioButton { spacing: 8px; min-height: 24px; outline: none; }
QCheckBox::indicator, QRadioButton::indicator { width: 16px; height: 16px; background: @surface@; border: 1px solid @secondaryText@; }
QCheckBox::indicator { border-radius: 4px; }
QRadioButton::indicator { border-radius: 9px; }
QCheckBox::indicator:hover, QRadioButton::indicator:hover { border-color: @accent@; }
QCheckBox::indicator:checked { background: @accent@; border-color: @accent@; image: url(:/symbols/check-@scheme@.svg); }
QRadioButton::indicator:checked { width: 8px; height: 8px; border: 5px solid @accent@; }
QCheckBox::indicator:focus, QRadioButton::indicator:focus { border: 2px solid @text@; width: 14px; height: 14px; }
QRadioButton::indicator:checked:focus { border: 5px solid @text@; width: 8px; height: 8px; }
QCheckBox::indicator:disabled, QRadioButton::indicator:disabled { background: @window@; border-color: @border@; }
QCheckBox:disabled, QRadioButton:disabled { color: @disabledText@; }

QLineEdit, QPlainTextEdit, QTextBrowser { background: @surface@; border: 1px solid @border@; border-radius: 6px; padding: 5px 8px; selection-background-color: @accent@; selection-color: @accentText@; }
QLineEdit { min-height: 22px; }
QLineEdit:focus, QPlainTextEdit:focus, QTextBrowser:focus { border: 2px solid @accent@; padding: 4px 7px; }
QLineEdit:disabled { background: @window@; color: @disabledText@; }
QComboBox { background: @surface@; border: 1px solid @border@; border-radius: 6px; padding: 5px 8px; min-height: 22px; }
QComboBox:hover { background: @raised@; }
QComboBox:focus { border: 2px solid @accent@; padding: 4px 7px; }
QComboBox:disabled { background: @window@; color: @disabledText@; }
QComboBox::drop-down { border: none; width: 24px; }
QComboBox::down-arrow { image: none; }
QListView, QTreeView { background: @surface@; border: 1px solid @border@; border-radius: 6px; outline: none; }
QListView::item, QTreeView::item { min-height: 28px; padding: 2px 6px; background: transparent; color: @text@; }
QListView::item:hover, QTreeView::item:hover { background: @raised@; }
QListView::item:selected, QTreeView::item:selected { background: @selection@; color: @text@; }
QListView[role="grid"] { background: transparent; border: none; }
QListView:focus, QTreeView:focus { border: 1px solid @accent@; }
QListView[role="grid"]:focus { border: none; }
QScrollBar:vertical { background: transparent; width: 12px; margin: 0; }
QScrollBar::handle:vertical { background: @border@; border-radius: 4px; min-height: 32px; margin: 2px; }
QScrollBar::handle:vertical:hover { background: @disabledText@; }
QScrollBar::add-line, QScrollBar::sub-line { height: 0; width: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QProgressBar { background: @raised@; border: none; border-radius: 2px; max-height: 4px; }
QProgressBar::chunk { background: @accent@; border-radius: 2px; }
QMenu { background: @surface@; border: 1px solid @border@; padding: 4px; }
QMenu::item { padding: 6px 24px 6px 12px; border-radius: 4px; }
QMenu::item:selected { background: @selection@; color: @text@; }
QMenu::item:disabled { color: @disabledText@; }
QMenu::separator { height: 1px; background: @border@; margin: 4px 8px; }
)";

QString styleSheetOf(const Colors& colors) {
  const struct {
    const char* name;
    const QColor& color;
  } kNames[] = {
      {"@window@", colors.window},
      {"@surface@", colors.surface},
      {"@raised@", colors.raised},
      {"@border@", colors.border},
      {"@text@", colors.text},
      {"@secondaryText@", colors.secondaryText},
      {"@disabledText@", colors.disabledText},
      {"@accent@", colors.accent},
      {"@accentRaised@", colors.accentRaised},
      {"@accentText@", colors.accentText},
      {"@selection@", colors.selection},
      {"@error@", colors.error},
  };
  QString sheet = QString::fromLatin1(kStyleSheet);
  for (const auto& row : kNames) sheet.replace(QLatin1String(row.name), row.color.name());
  sheet.replace(QLatin1String("@scheme@"), QLatin1String(currentScheme == ColorScheme::kDark ? "dark" : "light"));
  return sheet;
}

}  // namespace

ColorScheme colorScheme() { return currentScheme; }

const Colors& colors() { return currentScheme == ColorScheme::kDark ? kDark : kLight; }

void applyTheme(QApplication& application, ColorScheme scheme) {
  if (scheme == currentScheme && !application.styleSheet().isEmpty()) return;
  currentScheme = scheme;
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  QApplication::setPalette(paletteOf(colors()));
  application.setStyleSheet(styleSheetOf(colors()));
}

}  // namespace orvane

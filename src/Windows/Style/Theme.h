#pragma once

#include <QColor>

class QApplication;

namespace orvane {

enum class ColorScheme { kLight, kDark };

/// The colours of the program's surfaces. Text on each ground has a contrast of at least 4.5 to 1.
struct Colors {
  QColor window;   ///< ground of a window
  QColor surface;  ///< ground of cards, lists and fields
  QColor raised;   ///< what the pointer is over
  QColor border;
  QColor text;
  QColor secondaryText;
  QColor disabledText;
  QColor accent;        ///< main buttons, selection, focus
  QColor accentRaised;  ///< the same under the pointer
  QColor accentText;    ///< on accent
  QColor selection;     ///< ground of what is selected
  QColor error;
  QColor shade;  ///< over a surface that takes no input
};

/// The scheme that is in force. Main thread only, as all here.
ColorScheme colorScheme();
const Colors& colors();

/// Gives the program its style, in a colour scheme; may be called again at any time, and everything redraws.
///
/// Views choose looks by a dynamic property "role": labels "title", "heading", "secondary", "error"; buttons "primary",
/// "link", "icon", "danger", "row"; frames "card", "panel", "bar".
void applyTheme(QApplication& application, ColorScheme scheme);

}  // namespace orvane

#pragma once

#include <string>

class QWidget;

namespace orvane {

/// Shows a window, restores it if it is minimised, and brings it to the front with the keyboard focus, also from behind
/// another program's window.
/// @param token by which the desktop lets it come: its own, from a click, or that of a start; empty if there is none.
void activateWindow(QWidget& window, const std::string& token = {});

}  // namespace orvane

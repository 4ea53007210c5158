#pragma once

#include <optional>

namespace orvane {

/// The windows beside the main one, by what they show. Each exists once, for as long as the program.
enum class AuxiliaryWindow {
  kCredentials,
  kLocation,
  kProgress,
  kConfirmation,
  kUpdate,
  kAlert,
  kLaunchFileAlert,  ///< of a launch file that was opened, whatever the main window does
  kEditLocation,
  kSettings,
  kAbout
};

/// What a free window stands before.
enum class WindowParent { kNone, kMainWindow };

/// The program's windows as things of the desktop: shown, hidden, attached, run modally. What is drawn in them is their
/// controllers' state. Main thread only.
class WindowHost {
 public:
  virtual ~WindowHost() = default;

  /// Shows the main window and gives it the keyboard focus.
  virtual void showMainWindow() = 0;
  virtual void hideMainWindow() = 0;
  virtual void bringMainWindowToFront() = 0;
  virtual bool isMainWindowMiniaturized() const = 0;
  virtual void deminiaturizeMainWindow() = 0;

  /// Shows the window as a sheet of the main one, which takes no input meanwhile. There is one sheet at a time.
  virtual void beginSheet(AuxiliaryWindow window) = 0;
  /// Detaches the sheet, which stays visible until hide().
  virtual void endSheet(AuxiliaryWindow window) = 0;
  virtual std::optional<AuxiliaryWindow> attachedSheet() const = 0;

  /// Shows the window free and centred; no other takes input until endModalSession. Returns at once.
  virtual void beginModalSession(AuxiliaryWindow window) = 0;
  /// The window stays visible until hide().
  virtual void endModalSession(AuxiliaryWindow window) = 0;

  /// Shows the window, centred on the main window if that is its parent, and handles events, the main queue's work
  /// included, until stopModal: the one call here that doesn't return at once. Such runs may be nested.
  virtual void runModal(AuxiliaryWindow window, WindowParent parent) = 0;
  /// Has the window's runModal return once those inside it have, and hides the window. Nothing happens if it has none.
  virtual void stopModal(AuxiliaryWindow window) = 0;
  /// The window that alone takes input, by a session or a run; the innermost.
  virtual std::optional<AuxiliaryWindow> modalWindow() const = 0;

  /// Shows the window free and centred, and gives it the focus.
  virtual void show(AuxiliaryWindow window) = 0;
  virtual void hide(AuxiliaryWindow window) = 0;
};

}  // namespace orvane

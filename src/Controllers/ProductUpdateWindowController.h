#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Controllers/Surface.h"
#include "Platform/Opener.h"
#include "Platform/WindowHost.h"

/// Offers a newer connector, or demands it. Main thread only.
class ProductUpdateWindowController : public orvane::Surface {
 public:
  /// What becomes of the connect that asked.
  enum Choice : int { kInstall = 0, kCancel = 1, kLater = 2 };
  using Choose = std::function<void(int choice)>;

  ProductUpdateWindowController(orvane::WindowHost& windows, std::shared_ptr<orvane::Opener> opener,
                                std::shared_ptr<orvane::GlobalQueue> globalQueue);

  /// Asks, and blocks in a modal run until there is an answer or the content is reset.
  ///
  /// Asked again meanwhile, this returns at once, and the callback before is dropped, which counts as an answer that
  /// chooses nothing: the window has one run at a time. The one that is up goes on with the new question; if it was
  /// closed and only waits for runs inside it, another follows it. A run that others end drops the callback.
  void showUpdateWindowOnParent(orvane::WindowParent parent, const std::string& updateURL, bool updateRequired,
                                const std::string& avaliableVersion, Choose onChooseBlock);

  void onInstallClick();
  /// "Cancel" of a required update, "Later" of an optional one.
  void onCancelClick();

  /// Answers with kCancel if that is wanted, drops all that was set up, and ends the modal run unless its caller has.
  void resetContentWithBlockPerform(bool performs);

  const std::string& newVersion() const { return _newVersion; }
  const std::string& title() const { return _title; }
  const std::string& cancelButtonTitle() const { return _cancelButtonTitle; }

  /// A version's numbers without leading zeros, "8.6.1" for "08.06.01"; what is no number is 0.
  static std::string removeForwardZeroesFromString(std::string_view text, std::string_view separator);

 private:
  void setupProductUpdateWindow();
  void close(std::optional<Choice> choice);
  void dropContent();

  orvane::WindowHost& _windows;
  const std::shared_ptr<orvane::Opener> _opener;
  const std::shared_ptr<orvane::GlobalQueue> _globalQueue;
  Choose _onChooseBlock{};
  std::string _updateURL{};
  std::string _avaliableVersion{};
  bool _updateRequired = false;
  orvane::WindowParent _parent = orvane::WindowParent::kNone;
  bool _isRunning = false;  // whether the run has yet to return
  bool _isShown = false;    // whether it has yet to be ended
  std::string _newVersion{};
  std::string _title{};
  std::string _cancelButtonTitle{};
};

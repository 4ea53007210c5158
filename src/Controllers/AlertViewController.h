#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Controllers/Surface.h"

/// A message with one button or more. Main thread only.
class AlertViewController : public orvane::Surface {
 public:
  /// The answer of an alert that was taken away.
  static constexpr int kNoButton = 0x7FFFFFFF;

  /// @param buttonTitles in order; without any there is one button, "OK".
  /// @param onDoneBlock gets the index of the button, once.
  /// @param asWindow the title is the window's, not the view's.
  void prepareAlertWithTitle(const std::string& title, const std::string& text, std::vector<std::string> buttonTitles,
                             std::function<void(int)> onDoneBlock, bool asWindow);
  /// With "OK" alone.
  void prepareAlertWithTitle(const std::string& title, const std::string& text, std::function<void()> onDone,
                             bool asWindow);

  void onButtonClick(int index);

  /// Answers with kNoButton if that is wanted, and drops the callback and the buttons but the first.
  void resetContentWithBlockPerform(bool performs);
  void resetContent() { resetContentWithBlockPerform(false); }

  const std::string& title() const { return _title; }
  bool isTitleHidden() const { return _isTitleHidden; }
  const std::string& text() const { return _text; }
  const std::vector<std::string>& buttonTitles() const { return _buttonTitles; }

 private:
  std::function<void(int)> _onDoneBlock{};
  std::string _title{};
  bool _isTitleHidden = false;
  std::string _text{};
  std::vector<std::string> _buttonTitles{};
};

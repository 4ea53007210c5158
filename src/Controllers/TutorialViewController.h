#pragma once

#include <functional>
#include <string>

#include "Controllers/Surface.h"
#include "OrvaneCommon/OrvaneSettings.h"

/// The tips that the program begins with, in pages. Main thread only.
class TutorialViewController : public orvane::Surface {
 public:
  static constexpr int kPageCount = 4;

  /// The preferences are not owned.
  explicit TutorialViewController(OrvaneSettings& settings);

  /// Opens on the first page. The callback is called when the user has left the last one, or skips.
  void setupTutorialWithFinishBlock(std::function<void()> onFinish);
  /// Drops the callback and stores nothing.
  void cancelStartupTips();

  /// The page selector; an index without a page changes nothing.
  void onPageSelected(int index);
  /// Behind the last page is the end.
  void onNextPageClicked();
  void onSkipClicked() { closeStartupTips(); }
  void setShowOnStartChecked(bool isChecked);

  int page() const { return _page; }
  std::string pageTitle() const;
  std::string pageText() const;
  bool isShowOnStartChecked() const { return _checkboxShowOnStart; }

 private:
  void closeStartupTips();

  OrvaneSettings& _settings;
  std::function<void()> _onFinishBlock{};
  bool _isOpen = false;
  int _page = 0;
  bool _checkboxShowOnStart = true;
};

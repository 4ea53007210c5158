#include "Controllers/TutorialViewController.h"

#include <utility>

#include "OrvaneCommon/LocalizedText.h"
#include "Support/OvWriteLog.h"

namespace {

using orvane::localizedTextKey;

struct TutorialPage {
  const char* titleKey;
  const char* textKey;
};

constexpr TutorialPage kPages[TutorialViewController::kPageCount] = {
    {localizedTextKey("TutorialViewController.Connections.Title"),
     localizedTextKey("TutorialViewController.Connections.Text")},
    {localizedTextKey("TutorialViewController.Applications.Title"),
     localizedTextKey("TutorialViewController.Applications.Text")},
    {localizedTextKey("TutorialViewController.DesktopIntegration.Title"),
     localizedTextKey("TutorialViewController.DesktopIntegration.Text")},
    {localizedTextKey("TutorialViewController.Settings.Title"),
     localizedTextKey("TutorialViewController.Settings.Text")},
};

}  // namespace

TutorialViewController::TutorialViewController(OrvaneSettings& settings) : _settings(settings) {}

void TutorialViewController::setupTutorialWithFinishBlock(std::function<void()> onFinish) {
  _onFinishBlock = std::move(onFinish);
  _isOpen = true;
  _checkboxShowOnStart = _settings.showTutorialOnStart();
  _page = 0;
  changed();
}

void TutorialViewController::cancelStartupTips() {
  _onFinishBlock = nullptr;
  _isOpen = false;
  changed();
}

void TutorialViewController::onPageSelected(int index) {
  if (index < 0 || index >= kPageCount) return;
  _page = index;
  OvWriteLog(4, "%s: Selected page: %i", __func__, _page);
  changed();
}

void TutorialViewController::onNextPageClicked() {
  if (_page + 1 < kPageCount) {
    onPageSelected(_page + 1);
  } else {
    closeStartupTips();
  }
}

void TutorialViewController::setShowOnStartChecked(bool isChecked) {
  _checkboxShowOnStart = isChecked;
  changed();
}

void TutorialViewController::closeStartupTips() {
  if (!std::exchange(_isOpen, false)) return;
  const auto onFinish = std::exchange(_onFinishBlock, nullptr);
  _settings.setShowTutorialOnStart(_checkboxShowOnStart);
  _settings.save();
  if (onFinish) onFinish();
}

std::string TutorialViewController::pageTitle() const { return orvane::localizedText(kPages[_page].titleKey); }

std::string TutorialViewController::pageText() const { return orvane::localizedText(kPages[_page].textKey); }

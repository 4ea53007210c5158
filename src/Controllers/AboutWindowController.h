#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "Controllers/Surface.h"
#include "Platform/Opener.h"

/// What the program is, in two pages. Main thread only.
class AboutWindowController : public orvane::Surface {
 public:
  enum class Page : int { kAbout = 0, kLegal = 1 };

  AboutWindowController(std::shared_ptr<orvane::Opener> opener, std::shared_ptr<orvane::GlobalQueue> globalQueue);

  /// Opens on the first page.
  void setupAboutWindow();
  void handleLegalInfoClick() { selectPage(Page::kLegal); }
  void handleBackClick() { selectPage(Page::kAbout); }
  /// Opens the documentation in the browser.
  void handleHelpClick();
  /// A link of the legal page opens in the browser. @return false: the page itself goes nowhere.
  bool handleLegalLinkClick(const std::string& address);

  Page page() const { return _page; }
  std::string windowTitle() const;
  std::string versionText() const;
  std::string legalNotice() const;
  /// HTML.
  std::string legalText() const;

  /// A release as people say it: without its last part if that is 0, "8.6" for "8.6.0".
  static std::string getOrvaneVersion(std::string_view shortVersion);

 private:
  void selectPage(Page page);

  const std::shared_ptr<orvane::Opener> _opener;
  const std::shared_ptr<orvane::GlobalQueue> _globalQueue;
  Page _page = Page::kAbout;
};

#include "Controllers/AboutWindowController.h"

#include <cstdlib>
#include <utility>

#include "Controllers/HelpAddress.h"
#include "OrvaneCommon/LocalizedText.h"
#include "OrvaneCommon/OvUVersions.h"
#include "OrvaneCommon/TextFormat.h"

namespace {

struct Library {
  const char* name;
  const char* licence;
  const char* address;
};

constexpr Library kLibraries[] = {
    {"c-ares", "MIT", "https://c-ares.org/"},
    {"GLib", "LGPL-2.1-or-later", "https://docs.gtk.org/glib/"},
    {"libb64", "public domain", "https://libb64.sourceforge.net/"},
    {"libcurl", "curl (MIT style)", "https://curl.se/"},
    {"libplist", "LGPL-2.1-or-later", "https://libimobiledevice.org/"},
    {"libpng", "libpng-2.0", "http://www.libpng.org/"},
    {"libsecret", "LGPL-2.1-or-later", "https://gnome.pages.gitlab.gnome.org/libsecret/"},
    {"OpenSSL", "Apache-2.0", "https://www.openssl.org/"},
    {"pugixml", "MIT", "https://pugixml.org/"},
    {"Qt 6", "LGPL-3.0-only", "https://www.qt.io/"},
};

std::string libraryList() {
  std::string rows;
  for (const Library& library : kLibraries) {
    rows += orvane::formatText("<li><a href=\"%@\">%@</a>: %@</li>", {library.address, library.name, library.licence});
  }
  return rows;
}

}  // namespace

AboutWindowController::AboutWindowController(std::shared_ptr<orvane::Opener> opener,
                                             std::shared_ptr<orvane::GlobalQueue> globalQueue)
    : _opener(std::move(opener)), _globalQueue(std::move(globalQueue)) {}

void AboutWindowController::setupAboutWindow() { selectPage(Page::kAbout); }

void AboutWindowController::selectPage(Page page) {
  _page = page;
  changed();
}

void AboutWindowController::handleHelpClick() {
  _globalQueue->post([opener = _opener] { opener->openAddress(orvane::helpAddress()); });
}

bool AboutWindowController::handleLegalLinkClick(const std::string& address) {
  _globalQueue->post([opener = _opener, address] { opener->openAddress(address); });
  return false;
}

std::string AboutWindowController::windowTitle() const {
  return _page == Page::kLegal ? orvane::localizedText("AboutWindowController.WindowTitle.LegalPage")
                               : orvane::localizedText("AboutWindowController.WindowTitle.MainPage");
}

std::string AboutWindowController::versionText() const {
  return orvane::formatText(orvane::localizedText("AboutController.VersionBuild"),
                            {getOrvaneVersion(orvane::releaseVersion()), orvane::buildNumber()});
}

std::string AboutWindowController::legalNotice() const { return orvane::localizedText("AboutController.LegalNotice"); }

std::string AboutWindowController::legalText() const {
  return orvane::formatText(orvane::localizedText("LegalText"), {libraryList()});
}

std::string AboutWindowController::getOrvaneVersion(std::string_view shortVersion) {
  const size_t dot = shortVersion.rfind('.');
  const size_t last = dot == std::string_view::npos ? 0 : dot + 1;
  if (std::strtoll(std::string(shortVersion.substr(last)).c_str(), nullptr, 10) != 0) return std::string(shortVersion);
  return std::string(shortVersion.substr(0, last == 0 ? 0 : dot));
}

#include "OrvaneCommon/UserLanguages.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace orvane {

namespace {

std::string environmentText(const char* variable) {
  const char* value = getenv(variable);
  return value != nullptr ? value : "";
}

}  // namespace

std::string currentLocale() {
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const std::string name = environmentText(variable);
    if (!name.empty()) return name;
  }
  return "C";
}

std::vector<std::string> preferredLanguages() {
  std::vector<std::string> languages;
  std::istringstream entries(environmentText("LANGUAGE"));
  for (std::string entry; std::getline(entries, entry, ':');) {
    if (!entry.empty()) languages.push_back(entry);
  }
  if (languages.empty()) languages.push_back(currentLocale());
  return languages;
}

std::string canonicalLanguage(std::string_view name) {
  std::string language(name.substr(0, name.find_first_of(".@")));
  std::ranges::replace(language, '-', '_');
  return language;
}

std::string languageCode(std::string_view name) {
  const std::string language = canonicalLanguage(name);
  return language.substr(0, language.find('_'));
}

}  // namespace orvane

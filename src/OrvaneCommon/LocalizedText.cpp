#include "OrvaneCommon/LocalizedText.h"

#include <algorithm>

#include "OrvaneCommon/TextTable.h"
#include "OrvaneCommon/UserLanguages.h"

namespace orvane {

namespace {

constexpr std::string_view kChinese = "zh";
constexpr std::string_view kSimplifiedChinese = "zh-Hans";
constexpr std::string_view kTraditionalChinese = "zh-Hant";

// The writing follows from the territory where the name doesn't tell it.
std::string_view chineseOf(const std::string& language) {
  for (const std::string_view traditional : {"_Hant", "_TW", "_HK", "_MO"}) {
    if (language.find(traditional) != std::string::npos) return kTraditionalChinese;
  }
  return kSimplifiedChinese;
}

// The program's language for a locale name, or an empty text if it speaks none that fits.
std::string localisationFor(const std::string& name) {
  const std::string language = canonicalLanguage(name);
  if (language == "C" || language == "POSIX") return std::string(kTextTable.languages.front());
  const std::string code = languageCode(language);
  const std::string localisation = code == kChinese ? std::string(chineseOf(language)) : code;
  return std::ranges::count(kTextTable.languages, localisation) > 0 ? localisation : "";
}

}  // namespace

std::string localizedText(std::string_view key) { return localizedText(key, preferredLocalisations().front()); }

std::string localizedText(std::string_view key, std::string_view language) {
  const auto& [languages, keys, texts] = kTextTable;
  const auto row = std::ranges::lower_bound(keys, key);
  if (row == keys.end() || *row != key) return std::string(key);
  const auto column = std::ranges::find(languages, language);
  const auto index = [](auto begin, auto position) { return static_cast<size_t>(position - begin); };
  return std::string(texts[index(keys.begin(), row) * languages.size() +
                           (column == languages.end() ? 0 : index(languages.begin(), column))]);
}

const std::vector<std::string>& preferredLocalisations() {
  // Never freed: texts are looked up by whatever still runs while the process ends.
  static const auto& localisations = *new std::vector<std::string>(localisationsFor(preferredLanguages()));
  return localisations;
}

std::vector<std::string> localisationsFor(const std::vector<std::string>& languages) {
  std::vector<std::string> localisations;
  for (const std::string& language : languages) {
    const std::string localisation = localisationFor(language);
    if (!localisation.empty() && std::ranges::count(localisations, localisation) == 0) {
      localisations.push_back(localisation);
    }
  }
  if (localisations.empty()) localisations.emplace_back(kTextTable.languages.front());
  return localisations;
}

}  // namespace orvane

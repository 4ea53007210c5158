#pragma once

#include <string>
#include <string_view>
#include <vector>

/// @file
/// The program's texts by their keys, in the user's language. They are built in from data/texts: no file is read.
///
/// A key must stand as a literal in a call of localizedText or localizedTextKey, by which the tests find out that it
/// has a text in every language. Any thread.

namespace orvane {

/// The text of a key, UTF-8, in the first of the user's preferred localisations. A text that a language lacks comes in
/// English; a key without any text is its own text.
std::string localizedText(std::string_view key);

/// The same in a given language: "en", "de", "es", "fr", "ja", "ko", "zh-Hans", "zh-Hant"; any other gives English.
std::string localizedText(std::string_view key, std::string_view language);

/// The key itself: marks the literal of a key that is looked up elsewhere, such as in a table's row.
constexpr const char* localizedTextKey(const char* key) { return key; }

/// The program's languages in the user's order of preference, never empty: what of LANGUAGE, else LC_ALL, else
/// LC_MESSAGES, else LANG the program speaks; English if that leaves none. Read from the environment at the first call.
const std::vector<std::string>& preferredLocalisations();

/// What of these languages (POSIX locale names) the program speaks, in their order, each once; English if it is none.
std::vector<std::string> localisationsFor(const std::vector<std::string>& languages);

}  // namespace orvane

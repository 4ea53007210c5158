#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// The program's text for a key, UTF-8, in the first of the user's preferred localisations: built in, so that no file is
/// read. A text that a language lacks comes in English; a key without any text is its own text. Any thread.
std::string localizedText(std::string_view key);

/// The same in a given language: "en", "de", "es", "fr", "ja", "ko", "zh-Hans", "zh-Hant"; any other gives English.
std::string localizedText(std::string_view key, std::string_view language);

/// The program's languages in the user's order of preference, never empty: what of LANGUAGE, else LC_ALL, else
/// LC_MESSAGES, else LANG the program speaks; English if that leaves none. Read from the environment at the first call.
const std::vector<std::string>& preferredLocalisations();

}  // namespace orvane

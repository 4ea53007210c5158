#pragma once

#include <string>
#include <string_view>
#include <vector>

/// @file
/// What the environment says of the user's languages, read at each call. Names are POSIX locale names as they stand
/// there, such as "de_AT.UTF-8". Any thread.

namespace orvane {

/// The locale of the program's messages: the first of LC_ALL, LC_MESSAGES and LANG that isn't empty, else "C".
std::string currentLocale();

/// The user's languages, most wanted first, never empty: the entries of LANGUAGE, which are separated by colons, or the
/// current locale alone if there are none.
std::vector<std::string> preferredLanguages();

/// Language, script and territory of a locale name, without character set and modifier, joined by "_": "zh_TW" for
/// "zh-TW.UTF-8@stroke".
std::string canonicalLanguage(std::string_view name);

/// The language alone: "zh".
std::string languageCode(std::string_view name);

}  // namespace orvane

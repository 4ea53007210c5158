#pragma once

#include <optional>
#include <string>
#include <string_view>

/// @file
/// Texts for the broker and conversions of paths and addresses. Any thread.

/// The locale that the broker is told, such as "de-de", for the program's language as the user prefers it.
std::string OvU_GetPreferedWindowsLocale();

/// The same for any language, "de"; "en-us" for one that isn't in the list. The letter case counts.
std::string OvU_MapMacPrefferedLanguageToWindowsLocale(std::string_view language);

/// The DNS service record that tells a mail domain's brokers, "_orvane._tcp.example.test" for "ann@example.test": what
/// counts is behind the last "@". Empty if nothing is there, or there is no "@".
std::string OvU_GetServiceSearchQueryStringForEmail(std::string_view email);

/// `text` with "&amp;", "&lt;", "&gt;" and "&quot;" in place of these four characters.
std::string OvU_AddEscapeCharactersForXML(std::string_view text);

/// Whether `part` stands somewhere in `text`; an empty one doesn't.
bool MCDoesStringContain(std::string_view text, std::string_view part);

std::string OvU_ConvertWindowsToUnixPath(std::string path);
std::string OvU_ConvertUnixToWindowsPath(std::string path);

/// The address that a text names, reduced to scheme, host, port and path; a path of "/" alone is left out. Nothing if
/// the text is no URL or has no scheme or no host.
std::optional<std::string> OvU_MakeURLFromString(const std::string& text);

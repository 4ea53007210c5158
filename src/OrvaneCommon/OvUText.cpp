#include "OrvaneCommon/OvUText.h"

#include <algorithm>

#include "OrvaneCommon/LocalizedText.h"
#include "OrvaneCommon/UrlParts.h"

namespace {

struct LocaleRow {
  std::string_view language, locale;
};

constexpr LocaleRow kLocales[] = {
    {"de", "de-de"}, {"es", "es-es"},      {"fr", "fr-fr"},      {"ja", "ja-jp"},
    {"ko", "ko-kr"}, {"zh-Hans", "zh-cn"}, {"zh-Hant", "zh-hk"}, {"zh-TW", "zh-hk"},
};

bool isLetter(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

}  // namespace

std::string OvU_GetPreferedWindowsLocale() {
  return OvU_MapMacPrefferedLanguageToWindowsLocale(orvane::preferredLocalisations().front());
}

std::string OvU_MapMacPrefferedLanguageToWindowsLocale(std::string_view language) {
  const auto row = std::ranges::find(kLocales, language, &LocaleRow::language);
  return std::string(row == std::end(kLocales) ? "en-us" : row->locale);
}

std::string OvU_GetServiceSearchQueryStringForEmail(std::string_view email) {
  const size_t at = email.rfind('@');
  if (at == std::string_view::npos || at + 1 == email.size()) return "";
  return std::string("_orvane._tcp.").append(email.substr(at + 1));
}

std::string OvU_AddEscapeCharactersForXML(std::string_view text) {
  std::string escaped;
  for (const char character : text) {
    switch (character) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += character;
    }
  }
  return escaped;
}

bool MCDoesStringContain(std::string_view text, std::string_view part) {
  return !part.empty() && text.find(part) != std::string_view::npos;
}

std::string OvU_ConvertWindowsToUnixPath(std::string path) {
  std::ranges::replace(path, '\\', '/');
  return path;
}

std::string OvU_ConvertUnixToWindowsPath(std::string path) {
  std::ranges::replace(path, '/', '\\');
  return path;
}

std::optional<std::string> OvU_MakeURLFromString(const std::string& text) {
  // libcurl takes a digit for a scheme and changes its letter case, and forgives one slash and three before the host.
  const size_t colon = text.find(':');
  if (colon == std::string::npos || !isLetter(text[0]) || text.compare(colon, 3, "://") != 0 ||
      text.compare(colon, 4, ":///") == 0) {
    return std::nullopt;
  }
  const orvane::UrlParts url(text);
  const std::string host = url.part(CURLUPART_HOST);
  const std::string port = url.part(CURLUPART_PORT);
  const std::string path = url.part(CURLUPART_PATH);
  if (host.empty()) return std::nullopt;
  return text.substr(0, colon) + "://" + host + (port.empty() ? "" : ":" + port) + (path == "/" ? "" : path);
}

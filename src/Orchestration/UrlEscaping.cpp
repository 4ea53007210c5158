#include "Orchestration/UrlEscaping.h"

namespace orvane {

namespace {

constexpr std::string_view kAllowed =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~:/?#[]@!$&'()*+,;=";
constexpr std::string_view kHexadecimal = "0123456789ABCDEFabcdef";

bool isEscape(std::string_view text) {
  return text.size() >= 3 && text[0] == '%' && kHexadecimal.find(text[1]) != std::string_view::npos &&
         kHexadecimal.find(text[2]) != std::string_view::npos;
}

}  // namespace

std::string escapedUrl(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (size_t position = 0; position < text.size(); ++position) {
    const char character = text[position];
    if (kAllowed.find(character) != std::string_view::npos || isEscape(text.substr(position))) {
      result += character;
    } else {
      const auto byte = static_cast<unsigned char>(character);
      result.append({'%', kHexadecimal[byte >> 4], kHexadecimal[byte & 15]});
    }
  }
  return result;
}

}  // namespace orvane

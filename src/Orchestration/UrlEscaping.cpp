#include "Orchestration/UrlEscaping.h"

namespace orvane {

namespace {

constexpr std::string_view kUnreserved = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
constexpr std::string_view kReserved = ":/?#[]@!$&'()*+,;=";
constexpr std::string_view kHexadecimal = "0123456789ABCDEFabcdef";

bool isOf(std::string_view characters, char character) { return characters.find(character) != std::string_view::npos; }

bool isEscape(std::string_view text) {
  return text.size() >= 3 && text[0] == '%' && isOf(kHexadecimal, text[1]) && isOf(kHexadecimal, text[2]);
}

// `isKept` is asked with the text from each character on.
template <class IsKept>
std::string escaped(std::string_view text, const IsKept& isKept) {
  std::string result;
  result.reserve(text.size());
  for (size_t position = 0; position < text.size(); ++position) {
    if (isKept(text.substr(position))) {
      result += text[position];
    } else {
      const auto byte = static_cast<unsigned char>(text[position]);
      result.append({'%', kHexadecimal[byte >> 4], kHexadecimal[byte & 15]});
    }
  }
  return result;
}

}  // namespace

std::string escapedUrl(std::string_view text) {
  return escaped(text, [](std::string_view rest) {
    return isOf(kUnreserved, rest[0]) || isOf(kReserved, rest[0]) || isEscape(rest);
  });
}

std::string escapedPath(std::string_view path) {
  return escaped(path, [](std::string_view rest) { return isOf(kUnreserved, rest[0]) || rest[0] == '/'; });
}

}  // namespace orvane

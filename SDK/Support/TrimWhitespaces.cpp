#include "Support/TrimWhitespaces.h"

std::string trim_whitespaces(const std::string& text) {
  constexpr const char* kWhiteSpace = " \n\r\t";
  const size_t begin = text.find_first_not_of(kWhiteSpace);
  if (begin == std::string::npos) return text;
  return text.substr(begin, text.find_last_not_of(kWhiteSpace) - begin + 1);
}

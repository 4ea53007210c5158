#include "Support/TextCoding.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <cwchar>

namespace {

// What tells the bytes of a word that are not ASCII.
constexpr uint64_t kHighBits = 0x8080808080808080u;

bool isAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

// Copies the ASCII that `from` starts with, in words as long as it goes: most text is nothing else.
void copyAsciiRun(const char*& from, const char* end, char*& to) {
  for (uint64_t word = 0; end - from >= static_cast<std::ptrdiff_t>(sizeof word);) {
    memcpy(&word, from, sizeof word);
    if (word & kHighBits) break;
    memcpy(to, &word, sizeof word);
    from += sizeof word;
    to += sizeof word;
  }
  while (from < end && isAscii(*from)) *to++ = *from++;
}

size_t encodedSize(std::string_view text) {
  size_t size = text.size();
  const char* from = text.data();
  const char* const end = from + text.size();
  for (uint64_t word = 0; end - from >= static_cast<std::ptrdiff_t>(sizeof word); from += sizeof word) {
    memcpy(&word, from, sizeof word);
    // The product's top byte is the sum of the word's bytes, each 0 or 1.
    size += static_cast<size_t>((((word & kHighBits) >> 7) * 0x0101010101010101u) >> 56);
  }
  for (; from < end; ++from) size += isAscii(*from) ? 0 : 1;
  return size;
}

// `to` has room for encodedSize(text) bytes.
void encode(std::string_view text, char* to) {
  const char* from = text.data();
  const char* const end = from + text.size();
  while (from < end) {
    copyAsciiRun(from, end, to);
    for (; from < end && !isAscii(*from); ++from) {
      const auto byte = static_cast<unsigned char>(*from);
      *to++ = static_cast<char>(byte <= 0xBF ? 0xC2 : 0xC3);
      *to++ = static_cast<char>((byte & 0x3F) | 0x80);
    }
  }
}

// `to` has room for text.size() bytes; the return value is how many of them are used.
size_t decode(std::string_view text, char* to) {
  const char* const start = to;
  const char* from = text.data();
  const char* const end = from + text.size();
  while (from < end) {
    copyAsciiRun(from, end, to);
    while (from < end && !isAscii(*from)) {
      const auto lead = static_cast<unsigned char>(*from++);
      if (from == end || (lead != 0xC2 && lead != 0xC3)) {
        *to++ = static_cast<char>(lead);
        continue;
      }
      const auto byte = static_cast<unsigned char>(*from++);
      *to++ = static_cast<char>(lead == 0xC3 ? byte | 0xC0 : (byte & 0x3F) | 0x80);
    }
  }
  return static_cast<size_t>(to - start);
}

char toLowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

}  // namespace

namespace orvane {

std::string cp1252ToUtf8(std::string_view text) {
  std::string result(encodedSize(text), '\0');
  encode(text, result.data());
  return result;
}

std::string utf8ToCp1252(std::string_view text) {
  std::string result(text.size(), '\0');
  result.resize(decode(text, result.data()));
  return result;
}

}  // namespace orvane

char* ovutils_cp1252_to_utf8(const char* text) {
  if (!text) return nullptr;
  const std::string_view view = text;
  const size_t size = encodedSize(view);
  auto* const result = static_cast<char*>(malloc(size + 1));
  if (!result) return nullptr;
  encode(view, result);
  result[size] = '\0';
  return result;
}

char* ovutils_utf8_to_cp1252(const char* text) {
  if (!text) return nullptr;
  const std::string_view view = text;
  auto* const result = static_cast<char*>(malloc(view.size() + 1));
  if (!result) return nullptr;
  result[decode(view, result)] = '\0';
  return result;
}

// The forms with a state of their own: mbstowcs and wcstombs may keep theirs between calls.
std::wstring ovutils_string_to_wstring(const std::string& text) {
  std::wstring result(text.size() + 1, L'\0');
  mbstate_t state{};
  const char* from = text.c_str();
  const size_t length = mbsrtowcs(result.data(), &from, result.size(), &state);
  result.resize(length == static_cast<size_t>(-1) ? 0 : length);
  return result;
}

std::string ovutils_wstring_to_string(const std::wstring& text) {
  mbstate_t state{};
  const wchar_t* from = text.c_str();
  const size_t length = wcsrtombs(nullptr, &from, 0, &state);
  if (length == static_cast<size_t>(-1)) return {};
  std::string result(length + 1, '\0');
  state = {};
  wcsrtombs(result.data(), &from, result.size(), &state);
  result.resize(length);
  return result;
}

std::string ovutils_get_windows_locale(const char* posixLocale) {
  constexpr size_t kLongestName = 128;
  constexpr std::string_view kEncoding = ".utf-8";
  if (!posixLocale) return {};
  std::string name(posixLocale, strnlen(posixLocale, kLongestName));
  std::transform(name.begin(), name.end(), name.begin(), toLowerAscii);
  const size_t dot = name.find('.');
  const size_t underscore = name.find('_');
  if (dot == std::string::npos || underscore == std::string::npos || name.substr(dot) != kEncoding) return {};
  name[underscore] = '-';
  name.resize(dot);
  return name;
}

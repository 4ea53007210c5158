#pragma once

#include <cstring>
#include <optional>
#include <string_view>

namespace orvane {

/// The text of a zero-terminated field that came from another process; nothing if its terminator is missing.
template <size_t Size>
std::optional<std::string_view> fixedText(const char (&field)[Size]) {
  const size_t length = strnlen(field, Size);
  if (length == Size) return std::nullopt;
  return std::string_view(field, length);
}

/// Stores `text` (null counts as empty) with its terminator. False, with the field as it was, if it doesn't fit: half a
/// command line or half a user name is worse than none.
template <size_t Size>
[[nodiscard]] bool setFixedText(char (&field)[Size], const char* text) {
  const std::string_view value = text ? text : "";
  if (value.size() >= Size) return false;
  memset(field, 0, Size);
  value.copy(field, value.size());
  return true;
}

}  // namespace orvane

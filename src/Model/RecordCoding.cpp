#include "Model/RecordCoding.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <utility>

namespace orvane {

int32_t integerOfText(const std::string& text) {
  const long long number = std::strtoll(text.c_str(), nullptr, 10);  // at its own limits if the text goes beyond them
  using Limits = std::numeric_limits<int32_t>;
  return static_cast<int32_t>(std::clamp<long long>(number, Limits::min(), Limits::max()));
}

int32_t narrowed(int64_t value) {
  if (!std::in_range<int32_t>(value)) throw KeyedArchiveError("a number is out of range");
  return static_cast<int32_t>(value);
}

}  // namespace orvane

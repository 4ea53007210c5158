#include "OrvaneCommon/TextFormat.h"

namespace orvane {

std::string formatText(std::string_view format, std::initializer_list<std::string_view> arguments) {
  std::string text;
  auto next = arguments.begin();
  while (!format.empty()) {
    const bool isPlaceholder = format.starts_with("%@");
    if (isPlaceholder && next != arguments.end()) text += *next++;
    if (!isPlaceholder) text += format.front();
    format.remove_prefix(isPlaceholder || format.starts_with("%%") ? 2 : 1);
  }
  return text;
}

}  // namespace orvane

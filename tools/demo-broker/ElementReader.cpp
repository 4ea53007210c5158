#include "ElementReader.h"

#include <algorithm>
#include <charconv>
#include <sstream>

namespace orvane::demo {

void failAt(const FarmFileText& file, ptrdiff_t offset, const std::string& what) {
  const auto end = file.text.begin() + std::clamp<ptrdiff_t>(offset, 0, std::ssize(file.text));
  const auto line = 1 + std::count(file.text.begin(), end, '\n');
  throw FarmFileError(file.fileName + ": line " + std::to_string(line) + ": " + what);
}

void ElementReader::fail(const std::string& what) const { failAt(file_, element_.offset_debug(), what); }

std::string ElementReader::text(const char* name) {
  asked_.insert(name);
  return element_.attribute(name).value();
}

std::string ElementReader::requiredText(const char* name) {
  std::string value = text(name);
  if (value.empty()) fail(std::string("<") + element_.name() + "> needs the attribute " + name);
  return value;
}

int ElementReader::number(const char* name, int ifAbsent) { return has(name) ? requiredNumber(name) : ifAbsent; }

int ElementReader::requiredNumber(const char* name) {
  const std::string value = requiredText(name);
  int number = -1;
  const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
  if (error != std::errc() || end != value.data() + value.size() || number < 0) {
    fail(std::string(name) + "=\"" + value + "\" is no number");
  }
  return number;
}

bool ElementReader::yesOrNo(const char* name, bool ifAbsent) {
  const std::string value = text(name);
  if (!has(name)) return ifAbsent;
  if (value != "yes" && value != "no") fail(std::string(name) + "=\"" + value + "\" is neither yes nor no");
  return value == "yes";
}

std::set<std::string> ElementReader::words(const char* name) {
  std::istringstream stream(text(name));
  return {std::istream_iterator<std::string>(stream), {}};
}

std::map<std::string, std::string> ElementReader::anyOf(const std::vector<std::string_view>& names) {
  std::map<std::string, std::string> texts;
  for (const std::string_view candidate : names) {
    const std::string name(candidate);
    if (has(name.c_str())) texts[name] = text(name.c_str());
  }
  return texts;
}

void ElementReader::finish() const {
  for (const pugi::xml_attribute attribute : element_.attributes()) {
    if (!asked_.contains(attribute.name())) {
      fail(std::string("<") + element_.name() + "> has no attribute " + attribute.name());
    }
  }
}

}  // namespace orvane::demo

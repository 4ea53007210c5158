#include <cstdint>
#include <cstdlib>
#include <string>

#include "Support/OvException.h"
#include "Support/OvUrlParser.h"

namespace {

void require(bool holds) {
  if (!holds) abort();
}

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

void checkParts(const OvUrlParser& parser, const std::string& text) {
  require(parser.url() == text);
  require(text.starts_with(parser.scheme() + "://"));
  const std::string rest = text.substr(parser.scheme().size() + 3);
  require(contains(rest, parser.host()));
  require(parser.port() == -1 || (parser.port() >= 1 && parser.port() <= 65535));
  if (!parser.query().empty()) {
    require(rest.ends_with(parser.path() + "?" + parser.query()));
  } else if (!parser.path().empty()) {
    require(rest.ends_with(parser.path()) || rest.ends_with(parser.path() + "?"));
  }
  require(parser.query().empty() == parser.parameters().empty());
  size_t total = 0;
  for (const auto& [key, value] : parser.parameters()) {
    require(contains(parser.query(), key) && contains(parser.query(), value));
    require(!contains(key, "=") && !contains(value, "&"));
    total += key.size() + value.size();
  }
  require(total <= parser.query().size() + (size_t{1} << 20));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  OvUrlParser parser;
  try {
    parser.parse(text);
  } catch (const OvException& exception) {
    require(exception.getErrorCode() == 0 && exception.getErrorText() == "Invalid URL specified.");
    return 0;
  }
  checkParts(parser, text);
  return 0;
}

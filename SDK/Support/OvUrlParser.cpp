#include "Support/OvUrlParser.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "Support/OvException.h"

namespace {

constexpr size_t kNotFound = std::string::npos;
constexpr int32_t kHighestPort = 65535;

// What parameters may take beyond the query's own size. Only value-less parts need any: they repeat what follows them.
constexpr size_t kRepetitionLimit = size_t{1} << 20;

[[noreturn]] void refuse() { throw OvException(0, "Invalid URL specified."); }

// As atoi reads it, but in all above the highest port the same: a text of many digits must not overflow.
int32_t portFrom(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  int32_t port = 0;
  for (const char digit : text) {
    if (digit < '0' || digit > '9' || port > kHighestPort) break;
    port = port * 10 + (digit - '0');
  }
  return isNegative ? -port : port;
}

}  // namespace

void OvUrlParser::parse(const std::string& text) {
  std::string copy = text;  // before anything is cleared: the text may be a part of this very object
  *this = OvUrlParser();
  url_ = std::move(copy);
  constexpr std::string_view kLongMarker = ":///";
  constexpr std::string_view kMarker = "://";
  size_t marker = url_.find(kLongMarker);
  size_t position = marker + kLongMarker.size();
  if (marker == kNotFound) {
    marker = url_.find(kMarker);
    if (marker == kNotFound) refuse();
    position = marker + kMarker.size();
  }
  scheme_ = url_.substr(0, marker);
  parseAuthority(position);
  parseParameters();
}

void OvUrlParser::parseAuthority(size_t position) {
  const size_t colon = url_.find(':', position);
  if (colon != kNotFound) {
    host_ = url_.substr(position, colon - position);
    const size_t slash = url_.find('/', colon + 1);
    const int32_t port = portFrom(std::string_view(url_).substr(colon + 1, slash - (colon + 1)));
    if (port < 1 || port > kHighestPort) refuse();
    port_ = port;
    if (slash != kNotFound) parsePathAndQuery(slash);
    return;
  }
  const size_t slash = url_.find('/', position);
  if (slash != kNotFound) {
    host_ = url_.substr(position, slash - position);
    parsePathAndQuery(slash);
  } else if (url_.find('?', position) != kNotFound) {
    parsePathAndQuery(position);
  } else {
    host_ = url_.substr(position);
  }
}

void OvUrlParser::parsePathAndQuery(size_t position) {
  const size_t mark = url_.find('?', position);
  path_ = url_.substr(position, mark - position);
  if (mark != kNotFound) query_ = url_.substr(mark + 1);
}

void OvUrlParser::parseParameters() {
  if (query_.empty()) return;
  const std::string_view query = query_;
  size_t allowance = query.size() + kRepetitionLimit;
  size_t equals = query.find('=');
  size_t valueEnd = query.find('&', equals == kNotFound ? query.size() : equals);
  for (size_t start = 0;;) {
    // Searched for only once passed: from every start anew, a query of nothing but "&" would take quadratic time.
    if (equals != kNotFound && equals < start) {
      equals = query.find('=', start);
      valueEnd = query.find('&', equals == kNotFound ? query.size() : equals);
    }
    const size_t ampersand = query.find('&', start);
    const bool hasValue = equals != kNotFound;
    const std::string_view key = query.substr(start, (hasValue ? equals : ampersand) - start);
    const std::string_view value = hasValue ? query.substr(equals + 1, valueEnd - (equals + 1)) : std::string_view();
    if (key.size() + value.size() > allowance) refuse();
    allowance -= key.size() + value.size();
    parameters_.try_emplace(std::string(key), value);
    if (ampersand == kNotFound) return;
    start = ampersand + 1;
  }
}

#pragma once

#include <string>

#include <strings.h>

namespace orvane {

/// Whether the text begins as an http or https URL, in any letter case. What comes from outside is fetched only then:
/// libcurl knows other schemes, such as that of local files. Any thread.
inline bool isWebAddress(const std::string& text) {
  return strncasecmp(text.c_str(), "http://", 7) == 0 || strncasecmp(text.c_str(), "https://", 8) == 0;
}

}  // namespace orvane

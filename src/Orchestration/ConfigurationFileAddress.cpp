#include "Orchestration/ConfigurationFileAddress.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include <strings.h>

#include "OrvaneCommon/UrlParts.h"
#include "Platform/UserFolders.h"

namespace orvane {

namespace {

constexpr std::string_view kSchemeEnd = "://";

std::string shortestForm(std::string_view path) {
  std::vector<std::string_view> segments;
  while (!path.empty()) {
    const size_t slash = std::min(path.find('/'), path.size());
    const std::string_view segment = path.substr(0, slash);
    path.remove_prefix(std::min(slash + 1, path.size()));
    if (segment == "..") {
      if (!segments.empty()) segments.pop_back();
    } else if (!segment.empty() && segment != ".") {
      segments.push_back(segment);
    }
  }
  std::string result;
  for (const std::string_view segment : segments) result.append("/").append(segment);
  return result;
}

}  // namespace

bool isConfigurationFileAddress(const std::string& address) { return address.ends_with(".xml"); }

std::string configurationFileAddress(const std::string& address) {
  if (isConfigurationFileAddress(address)) return address;
  std::string base = address.substr(0, address.find_first_of("?#"));
  base.erase(base.find_last_not_of(":/") + 1);
  if (base.empty()) return "";
  const size_t schemeEnd = base.find(kSchemeEnd);
  const size_t host = schemeEnd == std::string::npos ? 0 : schemeEnd + kSchemeEnd.size();
  const size_t path = std::min(base.find('/', host), base.size());
  return base.substr(0, path) + shortestForm(std::string_view(base).substr(path)) + "/config.xml";
}

std::string localConfigurationPath(const std::string& address) {
  if (address.find(kSchemeEnd) != std::string::npos) {
    const UrlParts url(address);
    return strcasecmp(url.part(CURLUPART_SCHEME).c_str(), "file") == 0 ? url.part(CURLUPART_PATH, true) : "";
  }
  return address.starts_with("~/") ? homeFolder() + address.substr(1) : address;
}

}  // namespace orvane

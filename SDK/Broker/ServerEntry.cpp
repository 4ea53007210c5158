#include "Broker/ServerEntry.h"

#include <algorithm>

#include <strings.h>

namespace orvane {

namespace {

constexpr const char* kProxy = "/proxy";

}  // namespace

ServerEntry::ServerEntry(std::string_view entry) {
  const size_t slash = std::min(entry.find('/'), entry.size());
  host_ = entry.substr(0, slash);
  path_ = entry.substr(slash);
}

std::string ServerEntry::objectName(const char* path) const {
  if (path_.empty()) return path ? path : "/";
  const bool endsInProxy = strcasecmp(path_.c_str() + path_.rfind('/'), kProxy) == 0;
  return path_ + (endsInProxy ? "" : kProxy) + (path ? path : "");
}

std::string ServerEntry::urlOf(const std::string& path, bool useSSL, int tcpPort) const {
  const size_t scheme = path.find("://");
  if (scheme != std::string::npos && scheme > 0) return path;
  const bool needsProxy = !path_.empty() && path_.find(kProxy) == std::string::npos;
  return (useSSL ? "https://" : "http://") + host_ + ":" + std::to_string(tcpPort) + path_ +
         (needsProxy ? kProxy : "") + "/" + path;
}

}  // namespace orvane

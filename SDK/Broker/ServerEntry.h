#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// An entry of a server list, `host` or `host/path`. The path stands for the broker's proxy below it.
class ServerEntry {
 public:
  explicit ServerEntry(std::string_view entry);

  const std::string& host() const { return host_; }

  /// What a request to this entry asks for: the proxy itself, or `path` below it; null is the entry alone.
  std::string objectName(const char* path) const;

  /// The URL of `path` at this entry, or `path` itself if it is a URL.
  std::string urlOf(const std::string& path, bool useSSL, int tcpPort) const;

 private:
  std::string host_;
  std::string path_;  // with its leading slash, or empty
};

}  // namespace orvane

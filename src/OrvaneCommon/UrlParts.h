#pragma once

#include <memory>
#include <string>

#include <curl/curl.h>

namespace orvane {

/// A URL taken apart by the rules for URLs, with user and password, encoded characters and IPv6 addresses. Any scheme
/// is taken, none is guessed. One thread at a time.
class UrlParts {
 public:
  explicit UrlParts(const std::string& url);

  bool isUrl() const { return isUrl_; }
  /// A part as it stands in the URL, or decoded; empty if the URL has none or its decoded form has control characters.
  std::string part(CURLUPart part, bool decoded = false) const;

 private:
  struct Freeing {
    void operator()(CURLU* handle) const { curl_url_cleanup(handle); }
  };
  std::unique_ptr<CURLU, Freeing> handle_;
  bool isUrl_;
};

}  // namespace orvane

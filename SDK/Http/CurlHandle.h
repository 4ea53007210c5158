#pragma once

#include <memory>

#include <curl/curl.h>

namespace orvane {

struct CurlHandleDeleter {
  void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
};

/// A libcurl easy handle, for one thread at a time.
using CurlHandle = std::unique_ptr<CURL, CurlHandleDeleter>;

/// A new handle, or null if libcurl can't be set up. Sets up libcurl's global state on first use. Any thread.
CurlHandle makeCurlHandle();

}  // namespace orvane

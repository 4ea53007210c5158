#pragma once

#include <memory>

#include <curl/curl.h>

namespace orvane {

/// curl_easy_cleanup; null is nothing. May say goodbye to a server, so it is as careful as performTransfer.
struct CurlHandleDeleter {
  void operator()(CURL* handle) const;
};

/// A libcurl easy handle, for one thread at a time.
using CurlHandle = std::unique_ptr<CURL, CurlHandleDeleter>;

/// A new handle, or null if libcurl can't be set up. Sets up libcurl's global state on first use. Any thread.
CurlHandle makeCurlHandle();

/// curl_easy_perform that takes the signal of a connection which the server has closed (SIGPIPE) for this thread alone.
/// What libcurl does about it holds for the whole process, and so would fail with several threads.
CURLcode performTransfer(CURL* handle);

}  // namespace orvane

#pragma once

#include <cstddef>
#include <string>

#include "Http/HttpClientBase.h"

/// An HTTP(S) client that keeps its connection alive from one request to the next. One thread at a time.
///
/// Certificates are not checked, redirects not followed, no proxy is set (but libcurl heeds the environment's
/// `http_proxy` and its like). A connect takes at most the connect time-out; once connected, a transfer may last as
/// long as the server takes.
///
/// Nothing in a crafted address becomes credentials or a header: a URL with a blank, a control character or "name@"
/// before its host is refused with libcurl's code for a malformed URL (3), a header's value with a line end with that
/// for a bad argument (43).
class HttpClient : public HttpClientBase {
 public:
  /// A body of more bytes than this ends the transfer with libcurl's write error (23): it would otherwise take all
  /// memory before it ends.
  static constexpr size_t kMaximumBodySize = size_t{256} << 20;
  /// A URL of more characters than this, the query of a GET included, is refused with libcurl's code for a malformed
  /// URL (3): it is never cut, as a shorter one would name something else.
  static constexpr size_t kMaximumUrlLength = 2047;

  HttpClient();
  ~HttpClient() override;
  HttpClient(const HttpClient&) = delete;
  HttpClient& operator=(const HttpClient&) = delete;

  /// One exchange with the server, port, and object that the fields of HttpClientBase name; the query string goes with
  /// a GET only. `content` may hold any bytes but zero, and makes a POST of any method; null sends none. At log level 5
  /// the log shows the URL, the content and the size of each piece of the body as it comes in.
  /// @return the body, also an empty one, of a response of status 200.
  /// @throws HttpException libcurl's code and text if the transfer fails, or the status and "error response received
  ///         from HTTP server" for any status but 200.
  virtual std::string get();
  virtual std::string post(const std::string& content);
  virtual std::string sendRequest(const std::string& method, const std::string* content);

 private:
  void* handle_;  // a CURL easy handle
};

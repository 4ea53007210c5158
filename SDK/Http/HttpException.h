#pragma once

#include <exception>
#include <string>

/// A failed HTTP exchange. The code is libcurl's, the HTTP status, or 0 for a URL that can't be used. Never leaves the
/// broker client, which turns it into a failed send.
class HttpException : public std::exception {
 public:
  HttpException(int errorCode, std::string errorText);
  /// The text is "error %d occurred" with the code.
  explicit HttpException(int errorCode);

  int getErrorCode() const noexcept { return errorCode_; }
  const std::string& getErrorText() const noexcept { return errorText_; }
  const char* what() const noexcept override { return errorText_.c_str(); }

 private:
  int errorCode_;
  std::string errorText_;
};

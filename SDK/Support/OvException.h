#pragma once

#include <exception>
#include <string>
#include <utility>

/// The exception of the protocol layer, thrown and caught by value.
///
/// Codes are Windows error numbers (5, 13, 87, 1311), a broker's own, or 0 where a text alone says what is wrong. The
/// text is UTF-8 and fit to be shown to a user; it may be empty when a broker sent a code without one.
class OvException : public std::exception {
 public:
  OvException(int errorCode, std::string errorText) : errorCode_(errorCode), errorText_(std::move(errorText)) {}

  int getErrorCode() const noexcept { return errorCode_; }
  const std::string& getErrorText() const noexcept { return errorText_; }
  const char* what() const noexcept override { return errorText_.c_str(); }

 private:
  int errorCode_;
  std::string errorText_;
};

#pragma once

#include <string>

/// What went wrong, as the application tells it: a code and a text for the user in the user's language. Code 0 with an
/// empty text is no error.
struct OvError {
  int code = 0;
  std::string description{};

  bool operator==(const OvError&) const = default;
};

/// An error of this code and description.
OvError OvU_MakeNSError(int code, const std::string& description);

/// Stores such an error in `*error`; does nothing if it is null.
void OvU_ConfigureError(OvError* error, int code, const std::string& description);
